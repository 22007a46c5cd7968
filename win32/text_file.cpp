#include "win32/text_file.h"

#include <commdlg.h>

#include <algorithm>

#include "win32/com_apartment.h"
#include "win32/file_operations.h"
#include "win32/file_redirection.h"
#include "win32/handle.h"
#include "win32/long_path.h"
#include "win32/system_error.h"
#include "win32/text.h"

namespace tallowmere::win32 {
namespace {

using Result = std::optional<SystemError>;

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";
constexpr std::size_t longest_path = 32768;  ///< in units
constexpr std::size_t most_at_once = std::size_t{1} << 24;

std::wstring filter_of(std::span<const FileKind> kinds) {
  std::string filter;
  for (const FileKind& kind : kinds) {
    const std::string pattern = "*." + std::string(kind.extension);
    filter += std::string(kind.name) + " (" + pattern + ")" + '\0' + pattern + '\0';
  }
  return wide(filter);  // its second final zero is the string's own
}

/// Makes a file with a new name and fills it; `path` is then its path.
Result write_draft(const std::string& folder, std::string& path, std::string_view text) {
  const FileRedirectionOff direct;
  Handle file;
  for (DWORD number = GetTickCount(); !file; ++number) {
    path = folder + "~tw" + std::to_string(number) + ".tmp";
    file = file_handle(CreateFileW(wide(long_path(path)), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                   FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file && GetLastError() != ERROR_FILE_EXISTS) return last_system_error();
  }
  Result error = write_bytes(file.get(), utf8_mark);
  if (!error) error = write_bytes(file.get(), text);
  if (!error && !FlushFileBuffers(file.get())) error = last_system_error();
  file.reset();
  if (error) DeleteFileW(wide(long_path(path)));
  return error;
}

}  // namespace

std::optional<SystemError> write_bytes(HANDLE file, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto wanted = static_cast<DWORD>(std::min(bytes.size(), most_at_once));
    DWORD written = 0;
    if (!WriteFile(file, bytes.data(), wanted, &written, nullptr)) return last_system_error();
    bytes.remove_prefix(written);
  }
  return std::nullopt;
}

std::optional<SavePlace> ask_save_place(HWND owner, std::string_view name,
                                        std::span<const FileKind> kinds) {
  const ComApartment apartment;
  std::wstring path = wide(name);
  path.resize(longest_path);
  const std::wstring filter = filter_of(kinds);
  const std::wstring extension = wide(kinds.front().extension);
  OPENFILENAMEW dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner;
  dialog.lpstrFilter = filter.c_str();
  dialog.nFilterIndex = 1;
  dialog.lpstrFile = path.data();
  dialog.nMaxFile = static_cast<DWORD>(path.size());
  dialog.lpstrDefExt = extension.c_str();  // the dialog takes the chosen kind's
  dialog.Flags =
      OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  if (!GetSaveFileNameW(&dialog)) return std::nullopt;
  const std::size_t kind = std::max<DWORD>(dialog.nFilterIndex, 1) - 1;
  return SavePlace{narrow(path.c_str()), std::min(kind, kinds.size() - 1)};
}

std::optional<SystemError> write_text_file(const std::string& path, std::string_view text) {
  std::string draft;
  const std::string folder = path.substr(0, path.find_last_of("\\/") + 1);
  if (Result error = write_draft(folder, draft, text)) return error;
  WinFileOperations files(nullptr);
  Result error = files.move(draft, path, {.allowed = true}, [](auto, auto) { return true; });
  if (error) files.remove(draft, false);
  return error;
}

}  // namespace tallowmere::win32
