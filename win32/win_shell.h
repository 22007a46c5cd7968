#pragma once

#include <windows.h>

#include "files/system_shell.h"

namespace tallowmere::win32 {

/// The desktop of Windows.
class WinShell : public SystemShell {
 public:
  using Result = std::optional<SystemError>;

  /// What the system shows appears over `owner`.
  explicit WinShell(HWND owner) : owner_(owner) {}

  Result show_in_folder(const std::string& path) override;
  Result execute(std::string_view verb, const std::string& path) override;
  std::optional<SavedFile> ask_where_to_save(const std::string& name,
                                             const std::vector<FileType>& types) override;

 private:
  HWND owner_;
};

}  // namespace tallowmere::win32
