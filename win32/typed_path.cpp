#include "win32/typed_path.h"

#include <windows.h>

#include "win32/text.h"

namespace tallowmere::win32 {

std::string expand_variables(const std::string& text) {
  const std::wstring source = wide(text);
  const DWORD size = ExpandEnvironmentStringsW(source.c_str(), nullptr, 0);
  std::wstring expanded(size, L'\0');
  const DWORD written = ExpandEnvironmentStringsW(source.c_str(), expanded.data(), size);
  if (written == 0 || written > size) return text;
  expanded.resize(written - 1);
  return narrow(expanded);
}

std::string full_path(const std::string& path) {
  const std::wstring source = wide(path);
  const DWORD size = GetFullPathNameW(source.c_str(), 0, nullptr, nullptr);
  std::wstring full(size, L'\0');
  const DWORD length = GetFullPathNameW(source.c_str(), size, full.data(), nullptr);
  if (length == 0 || length >= size) return path;
  full.resize(length);
  return narrow(full);
}

}  // namespace tallowmere::win32
