#include "dialogs/folder_chooser.h"

#include "dialogs/drive_list.h"
#include "engine/letter_case.h"
#include "win32/message_box.h"

namespace tallowmere {

FolderChooser::FolderChooser(int template_id, HWND owner, const FileSystem& files, int drive_list,
                             int folder_list)
    : Form(template_id, owner), Drive1(item(drive_list)) {
  Dir1.attach(item(folder_list), files);
  // While the list is open, the choice is made when it closes.
  command(drive_list, CBN_SELCHANGE, [this] { Drive1_Change(); });
  command(drive_list, CBN_CLOSEUP, [this] { Drive1_Change(); });
  command(folder_list, LBN_DBLCLK, [this] { Dir1_DblClick(); });
}

bool FolderChooser::on_message(UINT message, WPARAM, LPARAM lparam, LRESULT& result) {
  if (message != WM_DRAWITEM) return false;
  const auto& draw = *reinterpret_cast<const DRAWITEMSTRUCT*>(lparam);
  if (draw.hwndItem != Dir1.handle()) return false;
  Dir1.draw(draw);
  result = TRUE;
  return true;
}

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
    if (name_key(Drive1.row_text(row)) != name_key(with_separator(drive))) continue;
    Drive1.select(row);
    return true;
  }
  return false;
}

std::string FolderChooser::drive() const {
  const int row = Drive1.selected();
  return row < 0 ? std::string() : Drive1.row_text(row);
}

void FolderChooser::Drive1_Change() {
  const std::string chosen = drive();
  const bool list_open = SendMessageW(Drive1.handle(), CB_GETDROPPEDSTATE, 0, 0) != FALSE;
  if (list_open || chosen.empty() || chosen == drive_shown_) return;
  std::string path = start_path();
  const std::string target = set_dir_to_drive(chosen, path, Dir1.path());
  if (auto error = Dir1.open(target == chosen ? current_folder(chosen) : target)) {
    select_drive(drive_shown_);
    drive_not_ready(*error);
    return;
  }
  drive_shown_ = chosen;
  folder_changed();
}

void FolderChooser::Dir1_DblClick() {
  if (auto error = Dir1.open_selected()) drive_not_ready(*error);
  folder_changed();
}

void FolderChooser::drive_not_ready(const SystemError& error) const {
  win32::message_box(handle(), drive_not_ready_message(error), drive_not_ready_title,
                     win32::BoxIcon::exclamation);
}

}  // namespace tallowmere
