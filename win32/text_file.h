#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "engine/file_system.h"

namespace tallowmere::win32 {

/// A kind of file that a text can be saved as.
struct FileKind {
  std::string_view name;       ///< as users read it
  std::string_view extension;  ///< without its dot
};

/// Where the user wants to save, and as which of the kinds.
struct SavePlace {
  std::string path;
  std::size_t kind = 0;
};

/// Shows the system's dialog for saving, which offers `name` and asks before a file is replaced.
/// Nothing when the user cancels, or when the system cannot show the dialog.
std::optional<SavePlace> ask_save_place(HWND owner, std::string_view name,
                                        std::span<const FileKind> kinds);

/// Writes all bytes at the file's current position.
std::optional<SystemError> write_bytes(HANDLE file, std::string_view bytes);

/// Writes a text in UTF-8 with its mark. A file with this name stays as it is until all is written.
std::optional<SystemError> write_text_file(const std::string& path, std::string_view text);

}  // namespace tallowmere::win32
