#include "win32/win_shell.h"

#include <shellapi.h>
#include <shlobj.h>

#include "win32/com_apartment.h"
#include "win32/system_error.h"
#include "win32/text.h"
#include "win32/text_file.h"

namespace tallowmere::win32 {
namespace {

using Result = WinShell::Result;

Result run(SHELLEXECUTEINFOW request) {
  request.cbSize = sizeof request;
  request.fMask |= SEE_MASK_FLAG_NO_UI;  // the program has its own messages
  request.nShow = SW_SHOWNORMAL;
  if (ShellExecuteExW(&request)) return std::nullopt;
  return last_system_error();
}

/// Opens the folder with the file selected; false where the system cannot, as for a path too long.
bool select_in_window(const std::wstring& path) {
  PIDLIST_ABSOLUTE item = nullptr;
  if (FAILED(SHParseDisplayName(path.c_str(), nullptr, &item, 0, nullptr))) return false;
  const bool shown = SUCCEEDED(SHOpenFolderAndSelectItems(item, 0, nullptr, 0));
  CoTaskMemFree(item);
  return shown;
}

/// Returns the program's path with its folder, so that no other program planted on the path is run.
std::wstring explorer() {
  std::wstring folder(MAX_PATH, L'\0');
  folder.resize(GetWindowsDirectoryW(folder.data(), MAX_PATH));
  return folder + L"\\explorer.exe";
}

}  // namespace

Result WinShell::show_in_folder(const std::string& path) {
  const ComApartment apartment;
  const std::wstring file = wide(path);
  if (select_in_window(file)) return std::nullopt;
  const std::wstring program = explorer();
  const std::wstring parameters = L"/select,\"" + file + L"\"";
  SHELLEXECUTEINFOW request{};
  request.hwnd = owner_;
  request.lpFile = program.c_str();
  request.lpParameters = parameters.c_str();
  return run(request);
}

Result WinShell::execute(std::string_view verb, const std::string& path) {
  const ComApartment apartment;
  const std::wstring verb_units = wide(verb);
  const std::wstring file = wide(path);
  SHELLEXECUTEINFOW request{};
  request.fMask = SEE_MASK_INVOKEIDLIST;  // also verbs that only the file's own menu knows
  request.hwnd = owner_;
  request.lpVerb = verb_units.c_str();
  request.lpFile = file.c_str();
  return run(request);
}

std::optional<SystemShell::SavedFile> WinShell::ask_where_to_save(
    const std::string& name, const std::vector<FileType>& types) {
  std::vector<FileKind> kinds;
  for (const FileType& type : types) kinds.push_back({type.name, type.extension});
  const auto place = ask_save_place(owner_, name, kinds);
  if (!place) return std::nullopt;
  return SavedFile{place->path, place->kind};
}

}  // namespace tallowmere::win32
