#pragma once

#include <string_view>

namespace tallowmere::win32 {

/// Where a 32-bit program on 64-bit Windows asks for System32, the system shows it another folder.
/// While an object of this class lives, its thread reaches the real one. It belongs around single
/// calls that open a path, as close as can be: a DLL that the thread loads meanwhile would be
/// sought in the real folder too. Does nothing in 64-bit programs and on 32-bit Windows; leaves
/// what GetLastError tells alone.
class FileRedirectionOff {
 public:
  FileRedirectionOff();
  ~FileRedirectionOff();
  FileRedirectionOff(const FileRedirectionOff&) = delete;
  FileRedirectionOff& operator=(const FileRedirectionOff&) = delete;

#ifndef _WIN64
 private:
  bool off_ = false;
  void* before_ = nullptr;
#endif
};

/// Whether the system takes this path for another file's. To be asked before a path is handed to
/// what must load DLLs, such as the shell.
bool is_redirected(std::string_view path);

#ifdef _WIN64
inline FileRedirectionOff::FileRedirectionOff() = default;
inline FileRedirectionOff::~FileRedirectionOff() {}
inline bool is_redirected(std::string_view) {
  return false;
}
#endif

}  // namespace tallowmere::win32
