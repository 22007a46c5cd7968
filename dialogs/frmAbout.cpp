#include "dialogs/frmAbout.h"

#include <utility>

#include "dialogs/resource.h"
#include "help/help_pages.h"

namespace tallowmere {

frmAbout::frmAbout(HWND owner)
    : Form(IDD_ABOUT, owner),
      Label1(item(IDC_ABOUT_LABEL1)),
      Label2(item(IDC_ABOUT_LABEL2)),
      Image1(item(IDC_ABOUT_IMAGE1)),
      Command1(item(IDOK)) {
  set_title_font();
  Label1.set_text(about_title);
  Label2.set_text(about_text);
  show_icon();
  clicked(IDOK, [this] { Command1_Click(); });
  clicked(IDCANCEL, [this] { Command1_Click(); });
}

void frmAbout::set_title_font() {
  win32::Font font = bold_font(handle());
  Label1.set_font(font.handle());
  title_font_ = std::move(font);
}

void frmAbout::show_icon() {
  // The form has its owner's icon, which the owner keeps.
  SendMessageW(Image1.handle(), STM_SETICON,
               static_cast<WPARAM>(SendMessageW(handle(), WM_GETICON, ICON_BIG, 0)), 0);
}

void frmAbout::Command1_Click() {
  hide_from(Command1.handle());
}

}  // namespace tallowmere
