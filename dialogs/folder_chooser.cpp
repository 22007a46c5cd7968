#include "dialogs/folder_chooser.h"

#include <utility>

#include "dialogs/drive_list.h"
#include "engine/letter_case.h"
#include "win32/message_box.h"

namespace tallowmere {

FolderChooser::FolderChooser(int template_id, HWND owner, const FileSystem& files, int drive_list,
                             int folder_list)
    : Form(template_id, owner), Drive1(item(drive_list)), finder_(handle(), files) {
  Dir1.attach(item(folder_list));
  // While the list is open, the choice is made when it closes.
  command(drive_list, CBN_SELCHANGE, [this] { Drive1_Change(); });
  command(drive_list, CBN_CLOSEUP, [this] { Drive1_Change(); });
  command(folder_list, LBN_DBLCLK, [this] { Dir1_DblClick(); });
}

bool FolderChooser::on_message(UINT message, WPARAM, LPARAM lparam, LRESULT& result) {
  if (message == WM_SETCURSOR && waiting() && LOWORD(lparam) == HTCLIENT) {
    SetCursor(LoadCursorW(nullptr, IDC_APPSTARTING));
    result = TRUE;
    return true;
  }
  if (message != WM_DRAWITEM) return false;
  const auto& draw = *reinterpret_cast<const DRAWITEMSTRUCT*>(lparam);
  if (draw.hwndItem != Dir1.handle()) return false;
  Dir1.draw(draw);
  result = TRUE;
  return true;
}

void FolderChooser::load_drives(const std::string& path) {
  Drive1.clear();
  for (const std::string& drive : existing_drives()) Drive1.add(drive);
  show_drive(path);
}

void FolderChooser::open_first(Look look) {
  open(std::move(look), [](const SystemError&) {});
  asked_ = false;
}

void FolderChooser::open(Look look, Failed failed) {
  asked_ = true;
  then_ = nullptr;
  finder_.find(std::move(look), [this, failed = std::move(failed)](FolderLookup&& lookup) {
    found(lookup, failed);
  });
  if (!waiting()) return;
  Dir1.show_waiting();
  waiting_changed();
}

void FolderChooser::found(FolderLookup& lookup, const Failed& failed) {
  if (lookup.error) {
    Dir1.show_rows();
  } else {
    Dir1.show(std::move(lookup.tree));
  }
  show_drive(Dir1.path());
  waiting_changed();
  const Handler then = std::exchange(then_, nullptr);
  if (lookup.error) return failed(*lookup.error);
  folder_changed();
  if (then) then();
}

void FolderChooser::give_up() {
  if (!waiting()) return;
  finder_.give_up();
  then_ = nullptr;
  Dir1.show_rows();
  show_drive(Dir1.path());
  waiting_changed();
}

void FolderChooser::show_drive(const std::string& path) {
  int shown = -1;
  for (int row = 0; row < Drive1.count(); ++row) {
    if (name_key(Drive1.row_text(row)) == name_key(with_separator(path.substr(0, 2)))) shown = row;
  }
  Drive1.select(shown);
  drive_asked_ = drive();
}

std::string FolderChooser::drive() const {
  const int row = Drive1.selected();
  return row < 0 ? std::string() : Drive1.row_text(row);
}

void FolderChooser::Drive1_Change() {
  const std::string chosen = drive();
  const bool list_open = SendMessageW(Drive1.handle(), CB_GETDROPPEDSTATE, 0, 0) != FALSE;
  if (list_open || chosen.empty() || chosen == drive_asked_) return;
  drive_asked_ = chosen;
  std::string path = start_path();
  const std::string target = set_dir_to_drive(chosen, path, Dir1.path());
  const std::string folder = target == chosen ? current_folder(chosen) : target;
  open([folder](const FileSystem& files,
                const auto& go_on) { return look_up_first(files, {folder}, go_on); },
       [this](const SystemError& error) { drive_not_ready(error); });
}

void FolderChooser::Dir1_DblClick() {
  const std::string path = Dir1.selected_path();
  if (path.empty()) return;
  open([path](const FileSystem& files,
              const auto& go_on) { return look_up_first(files, {path}, go_on); },
       [this](const SystemError& error) { drive_not_ready(error); });
}

void FolderChooser::drive_not_ready(const SystemError& error) const {
  win32::message_box(handle(), drive_not_ready_message(error), drive_not_ready_title,
                     win32::BoxIcon::exclamation);
}

}  // namespace tallowmere
