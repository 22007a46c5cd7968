#include "win32/program.h"

#include <windows.h>

#include "win32/text.h"

namespace tallowmere::win32 {

std::string program_folder() {
  std::wstring path(MAX_PATH, L'\0');
  DWORD length = 0;
  while ((length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()))) ==
         path.size()) {
    path.resize(path.size() * 2);
  }
  path.resize(length);
  return narrow(path.substr(0, path.rfind(L'\\') + 1));
}

}  // namespace tallowmere::win32
