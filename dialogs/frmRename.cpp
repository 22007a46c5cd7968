#include "dialogs/frmRename.h"

#include <utility>

#include "dialogs/resource.h"
#include "files/file_names.h"
#include "win32/text.h"

namespace tallowmere {

frmRename::frmRename(HWND owner)
    : Form(IDD_RENAME, owner),
      txtOldName(item(IDC_RENAME_OLD)),
      txtNewName(item(IDC_RENAME_NEW)),
      cmdOK(item(IDOK)),
      cmdCancel(item(IDCANCEL)),
      owner_(owner) {
  clicked(IDOK, [this] { cmdOK_Click(); });
  clicked(IDCANCEL, [this] { cmdCancel_Click(); });
}

void frmRename::show(const std::string& old_name, Rename rename) {
  rename_ = std::move(rename);
  txtOldName.set_text(old_name);
  txtNewName.set_text(old_name);
  show_modal(owner_);
  rename_ = nullptr;
}

/// Selects the name up to its extension, which mostly stays.
void frmRename::Form_Activate() {
  txtNewName.focus();
  txtNewName.select(0, static_cast<int>(win32::wide(name_stem(txtOldName.text())).size()));
}

void frmRename::cmdOK_Click() {
  if (rename_(txtNewName.text())) {
    hide_from(cmdOK.handle());
  } else {
    move_focus(txtNewName.handle());
  }
}

void frmRename::cmdCancel_Click() {
  hide_from(cmdOK.handle());
}

}  // namespace tallowmere
