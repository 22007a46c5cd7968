#include "dialogs/drive_list.h"

#include <windows.h>

#include "win32/typed_path.h"

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
  return win32::full_path(drive.substr(0, 2));
}

}  // namespace tallowmere
