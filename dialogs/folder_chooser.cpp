#include "dialogs/folder_chooser.h"

#include "dialogs/drive_list.h"
#include "engine/unicode.h"
#include "win32/message_box.h"

namespace tallowmere {

void FolderChooser::load_drives() const {
  Drive1.clear();
  for (const std::string& drive : existing_drives()) Drive1.add(drive);
}

bool FolderChooser::open(const std::string& drive, const std::string& path) {
  if (path.empty() || !select_drive(drive) || Dir1.open(path)) return false;
  drive_shown_ = this->drive();
  return true;
}

bool FolderChooser::select_drive(const std::string& drive) const {
  for (int row = 0; row < Drive1.count(); ++row) {
    if (compare_ignore_case(Drive1.row_text(row), with_separator(drive)) != 0) continue;
    Drive1.select(row);
    return true;
  }
  return false;
}

std::string FolderChooser::drive() const {
  const int row = Drive1.selected();
  return row < 0 ? std::string() : Drive1.row_text(row);
}

void FolderChooser::Drive1_Change(std::string path) {
  const std::string chosen = drive();
  const bool list_open = SendMessageW(Drive1.handle(), CB_GETDROPPEDSTATE, 0, 0) != FALSE;
  if (list_open || chosen.empty() || chosen == drive_shown_) return;
  const std::string target = set_dir_to_drive(chosen, path, Dir1.path());
  if (auto error = Dir1.open(target == chosen ? current_folder(chosen) : target)) {
    select_drive(drive_shown_);
    drive_not_ready(*error);
    return;
  }
  drive_shown_ = chosen;
}

void FolderChooser::Dir1_DblClick() {
  if (auto error = Dir1.open_selected()) drive_not_ready(*error);
}

void FolderChooser::drive_not_ready(const SystemError& error) const {
  win32::message_box(GetParent(Dir1.handle()), drive_not_ready_message(error),
                     drive_not_ready_title, win32::BoxIcon::exclamation);
}

}  // namespace tallowmere
