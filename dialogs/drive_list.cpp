#include "dialogs/drive_list.h"

#include <windows.h>

#include "win32/text.h"

namespace tallowmere {

std::vector<std::string> existing_drives() {
  std::vector<std::string> drives;
  const DWORD mask = GetLogicalDrives();
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    if ((mask >> (letter - 'A') & 1) != 0) drives.push_back(std::string(1, letter) + ":\\");
  }
  return drives;
}

std::string current_folder(const std::string& drive) {
  const std::wstring letter = win32::wide(drive.substr(0, 2));
  const DWORD size = GetFullPathNameW(letter.c_str(), 0, nullptr, nullptr);
  std::wstring folder(size, L'\0');
  const DWORD length = GetFullPathNameW(letter.c_str(), size, folder.data(), nullptr);
  if (length == 0 || length >= size) return drive;
  folder.resize(length);
  return win32::narrow(folder);
}

}  // namespace tallowmere
