#include "win32/program.h"

#include <windows.h>

#include "win32/text.h"

namespace tallowmere::win32 {

namespace {

/// LOAD_LIBRARY_SEARCH_SYSTEM32, which the headers know only for Windows 8 and later.
constexpr DWORD search_system_folder = 0x800;

/// The libraries that the program imports late (late_library in the CMakeLists.txt) or loads when
/// they exist. The common controls are not among them: the manifest says where they come from. Nor
/// is comdlg32, which Windows takes only from its own folder (see tools/check-program).
constexpr const wchar_t* late_libraries[] = {L"uxtheme.dll", L"winmm.dll"};

}  // namespace

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

void load_libraries_from_system() {
  const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
  const auto set_directories = reinterpret_cast<BOOL(WINAPI*)(DWORD)>(
      reinterpret_cast<void*>(GetProcAddress(kernel, "SetDefaultDllDirectories")));
  if (set_directories != nullptr && set_directories(search_system_folder)) return;
  // This is Windows 7 without its updates. A library loaded now is not looked for again.
  SetDllDirectoryW(L"");
  std::wstring folder(MAX_PATH, L'\0');
  folder.resize(GetSystemDirectoryW(folder.data(), MAX_PATH));
  for (const wchar_t* name : late_libraries) {
    LoadLibraryExW((folder + L'\\' + name).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  }
}

}  // namespace tallowmere::win32
