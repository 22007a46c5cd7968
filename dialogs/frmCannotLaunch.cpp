#include "dialogs/frmCannotLaunch.h"

#include "dialogs/resource.h"

namespace tallowmere {

frmCannotLaunch::frmCannotLaunch(HWND owner)
    : Form(IDD_CANNOT_LAUNCH, owner),
      lblPrompt(item(IDC_CANNOT_LAUNCH_PROMPT)),
      imgIcon(item(IDC_CANNOT_LAUNCH_ICON)),
      cmdOpen(item(IDOK)),
      cmdCancel(item(IDCANCEL)),
      owner_(owner) {
  SendMessageW(imgIcon.handle(), STM_SETICON,
               reinterpret_cast<WPARAM>(LoadIconW(nullptr, IDI_EXCLAMATION)), 0);
  clicked(IDOK, [this] { cmdOpen_Click(); });
  clicked(IDCANCEL, [this] { hide(); });
}

bool frmCannotLaunch::ask(std::string_view prompt) {
  lblPrompt.set_text(prompt);
  open_ = false;  // the answer when the program ends meanwhile
  show_modal(owner_);
  return open_;
}

void frmCannotLaunch::on_shown() {
  cmdOpen.focus();
  MessageBeep(MB_ICONEXCLAMATION);
}

void frmCannotLaunch::cmdOpen_Click() {
  open_ = true;
  hide();
}

}  // namespace tallowmere
