#include "actions/more_commands.h"

#include <windows.h>

#include "shell/list_export.h"
#include "win32/temp_file.h"

namespace tallowmere {

namespace {

constexpr std::string_view cannot_open_folder = "Cannot Open Folder";
constexpr std::string_view cannot_open_with = "Cannot Open File";
constexpr std::string_view cannot_show_properties = "Cannot Show Properties";
constexpr std::string_view cannot_save_list = "Cannot Save List";

}  // namespace

void MoreCommands::mnuOpenFolder_Click(const std::string& path) {
  if (!is_there(path, cannot_open_folder)) return;
  tell(shell_.show_in_folder(path), "SHOW THE FOLDER OF", path, cannot_open_folder);
}

void MoreCommands::mnuOpenWith_Click(const std::string& path) {
  if (!is_there(path, cannot_open_with)) return;
  tell(shell_.execute("openas", path), "OPEN", path, cannot_open_with);
}

void MoreCommands::mnuProperties_Click(const std::string& path) {
  if (!is_there(path, cannot_show_properties)) return;
  tell(shell_.execute("properties", path), "SHOW THE PROPERTIES OF", path, cannot_show_properties);
}

void MoreCommands::mnuSaveList_Click() {
  const auto chosen = shell_.ask_where_to_save(
      "Files Found.txt", {{"Text", "txt"}, {"Comma Separated Values", "csv"}});
  if (!chosen) return;
  const ListFormat format =
      list_format(chosen->path, chosen->type == 1 ? ListFormat::csv : ListFormat::text);
  tell(save(chosen->path, exported_list(list_, format, clock_)), "SAVE", chosen->path,
       cannot_save_list, "Save the list under another name or in another folder.");
}

/// Writes the list elsewhere first: what is in the file's place stays until all of it is there.
MoreCommands::Result MoreCommands::save(const std::string& path, std::string_view bytes) {
  win32::TempFile draft;
  if (auto error = draft.write(bytes)) return error;
  return files_.replace(draft.path(), path);
}

/// Reports a file that is gone: the list may be older than what has happened to its files, and the
/// system's own answers to that differ.
bool MoreCommands::is_there(const std::string& path, std::string_view title) {
  const Result error = files_.fault_of(path);
  tell(error, "FIND", path, title,
       "If the file was moved, renamed or deleted, search again to see where it is now.");
  return !error;
}

/// Reports an error, unless the window has been closed meanwhile.
void MoreCommands::tell(const Result& error, std::string_view doing, const std::string& path,
                        std::string_view title, std::string_view advice) {
  if (!error || error->code == ERROR_CANCELLED || !IsWindow(host_.window())) return;
  std::string text = error->text + " - encountered while trying to ";
  text.append(doing).append(" ").append(path);
  if (!advice.empty()) text.append("\n\n").append(advice);
  host_.message(text, title);
}

}  // namespace tallowmere
