#include "win32/file_redirection.h"

// This file is for 32-bit programs only: the header has all that others need.
#ifndef _WIN64

#include <windows.h>

#include <string>

#include "engine/unicode.h"
#include "win32/long_path.h"

namespace tallowmere::win32 {

namespace {

/// Finds a function of kernel32 that may be missing; null without it.
template <typename Function>
Function kernel_function(const char* name) {
  return reinterpret_cast<Function>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), name)));
}

}  // namespace

// Fails, and changes nothing, on 32-bit Windows.
FileRedirectionOff::FileRedirectionOff() {
  static const auto disable =
      kernel_function<BOOL(WINAPI*)(void**)>("Wow64DisableWow64FsRedirection");
  off_ = disable != nullptr && disable(&before_);
}

FileRedirectionOff::~FileRedirectionOff() {
  static const auto revert = kernel_function<BOOL(WINAPI*)(void*)>("Wow64RevertWow64FsRedirection");
  if (!off_) return;
  const DWORD error = GetLastError();
  revert(before_);
  SetLastError(error);
}

bool is_redirected(std::string_view path) {
  BOOL on_64_bits = FALSE;
  if (!IsWow64Process(GetCurrentProcess(), &on_64_bits) || !on_64_bits) return false;
  wchar_t system[MAX_PATH];
  const UINT length = GetSystemDirectoryW(system, MAX_PATH);
  const std::u16string given = to_utf16(path);
  return length > 0 && length < given.size() && given[length] == u'\\' &&
         CompareStringOrdinal(wide(given), static_cast<int>(length), system,
                              static_cast<int>(length), TRUE) == CSTR_EQUAL;
}

}  // namespace tallowmere::win32

#endif
