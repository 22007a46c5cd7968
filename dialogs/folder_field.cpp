#include "dialogs/folder_field.h"

#include <shlwapi.h>

namespace tallowmere {

void FolderField::attach(HWND combo) {
  ComboBox::operator=(ComboBox(combo));
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  GetComboBoxInfo(combo, &parts);
  box_ = win32::TextBox(parts.hwndItem);
  SHAutoComplete(box_.handle(), SHACF_FILESYS_DIRS);
}

void FolderField::show(const std::string& path) {
  set_text(path);
  shown_ = text();
  if (box_.has_focus()) {
    box_.select_all();
  } else {
    box_.select(0, 0);
  }
}

}  // namespace tallowmere
