#pragma once

#include <string_view>

namespace tallowmere::win32 {

/// Lets a thread reach the real System32 while the object lives: to a 32-bit program, 64-bit
/// Windows shows another folder in its place. It belongs as close as possible around single calls
/// that open a path: the system would also look for a DLL that the thread loads meanwhile in the
/// real folder. Does nothing in 64-bit programs and on 32-bit Windows; leaves the last error alone.
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

/// True when the system redirects this path to another file. To be asked before a path is handed to
/// something that must load DLLs, such as the shell.
bool is_redirected(std::string_view path);

#ifdef _WIN64
inline FileRedirectionOff::FileRedirectionOff() = default;
inline FileRedirectionOff::~FileRedirectionOff() {}
inline bool is_redirected(std::string_view) {
  return false;
}
#endif

}  // namespace tallowmere::win32
