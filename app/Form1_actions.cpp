#include <string>
#include <utility>
#include <vector>

#include "app/Form1.h"
#include "app/resource.h"
#include "dialogs/frmAbout.h"
#include "dialogs/frmHints.h"
#include "dialogs/frmQTips.h"
#include "shell/run_texts.h"
#include "win32/message_box.h"
#include "win32/message_loop.h"
#include "win32/text.h"

namespace tallowmere {

void Form1::message(std::string_view prompt, std::string_view title) {
  win32::message_box(handle(), prompt, title, win32::BoxIcon::exclamation);
}

void Form1::status(std::string_view text) {
  if (!text.empty()) Label2.set_text(text);
}

bool Form1::serve_events() {
  return win32::pump_pending();
}

/// The rows that a command is for; a message says when there is none.
std::vector<std::size_t> Form1::command_rows() {
  if (ListView2.selected_count() < 2) set_list2_index();
  std::vector<std::size_t> rows = ListView2.selected_rows();
  if (rows.empty()) message("Select one or more files in the list first.", "No File Selected");
  return rows;
}

/// The file that a command for one is for; empty when there is none.
std::string Form1::command_path() {
  if (command_rows().empty()) return {};
  return results_.indexed_filename(static_cast<std::size_t>(ListView2.selected()));
}

void Form1::cmdLaunch_Click() {
  const int row = ListView2.selected();
  if (row < 0) return;
  launcher_.cmdLaunch_Click(results_.indexed_filename(static_cast<std::size_t>(row)), search_,
                            shell_.find_on_launch);
}

void Form1::mnuMove_Click() {
  file_commands_.move_copy_dialog(FileCommand::move, paths_of(results_, command_rows()));
}

void Form1::mnuCopy_Click() {
  file_commands_.move_copy_dialog(FileCommand::copy, paths_of(results_, command_rows()));
}

void Form1::mnuRename_Click() {
  const std::string path = command_path();
  if (!path.empty()) file_commands_.rename_dialog(path);
}

void Form1::mnuDelete_Click() {
  file_commands_.delete_files(paths_of(results_, command_rows()));
}

void Form1::mnuRemove_Click() {
  file_commands_.remove_files(paths_of(results_, command_rows()));
}

/// Returns false when no name can be typed now. The list may be sorted until it is, so the file is
/// held by its path.
bool Form1::ListView2_BeforeLabelEdit(int row) {
  const auto index = static_cast<std::size_t>(row);
  if (busy() || !IsWindowEnabled(handle()) || index >= results_.file_count()) return false;
  edited_path_ = results_.indexed_filename(index);
  ListView2.select_stem(row);
  return true;
}

/// Renames a file as typed into its row; `text` is null when the user gave that up.
bool Form1::ListView2_AfterLabelEdit(const wchar_t* text) {
  const std::string path = std::exchange(edited_path_, {});
  if (text == nullptr || path.empty()) return false;
  return file_commands_.rename_file(path, win32::narrow(text));
}

void Form1::rows_removed(std::ptrdiff_t row) {
  ListView2.show_all();
  select_row(static_cast<int>(row));
  Label1.set_text(
      finished_text(static_cast<std::int64_t>(results_.file_count()), run_.files_searched()));
  if (results_.file_count() == 0) viewer_.clear();
  refresh_commands();
}

void Form1::rows_refreshed() {
  ListView2.repaint();
}

void Form1::viewed_file_changed(ViewedFile what) {
  switch (what) {
    case ViewedFile::moved:
      show_file(&results_.record(static_cast<std::size_t>(results_.viewed_index)));
      break;
    case ViewedFile::rewritten:
      viewer_.show_first_hit(static_cast<std::size_t>(results_.viewed_index));
      break;
    case ViewedFile::gone:
      viewer_.clear();
      // A user who deletes while reading goes on with the next file.
      request(&Pending::view);
      break;
    case ViewedFile::untouched:
      break;
  }
}

/// Asks for a sort that does not come at once: a label edit ends with the row where it is.
void Form1::records_changed() {
  ListView2.repaint();
  request(&Pending::sort);
}

/// The Edit menu, or another one, opens.
void Form1::mnuEdit_Click() {
  refresh_commands();
}

void Form1::mnuCopyToClipboard_Click() {
  clipboard_.mnuCopyToClipboard_Click(viewer_.selected_text());
}

void Form1::mnuAppendToClipboard_Click() {
  clipboard_.mnuAppendToClipboard_Click(viewer_.selected_text());
}

void Form1::mnuCopyFilename_Click() {
  if (ListView2.selected_count() < 2) set_list2_index();
  clipboard_.mnuCopyFilename_Click(paths_of(results_, ListView2.selected_rows()));
}

void Form1::mnuQTips_Click() {
  win32::made(frmQTips_, handle()).show(handle(), handle());
}

void Form1::mnuHints_Click() {
  win32::made(frmHints_, handle()).show(handle(), handle());
}

void Form1::show_about_form() {
  win32::made(frmAbout_, handle()).show(handle());
}

}  // namespace tallowmere
