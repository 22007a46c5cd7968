#include "win32/temp_file.h"

#include <windows.h>

#include "win32/handle.h"
#include "win32/system_error.h"
#include "win32/text.h"
#include "win32/text_file.h"

namespace tallowmere::win32 {

TempFile::~TempFile() {
  if (!path_.empty()) DeleteFileW(wide(path_).c_str());
}

std::optional<SystemError> TempFile::write(std::string_view bytes) {
  wchar_t folder[MAX_PATH + 1];
  wchar_t path[MAX_PATH];
  if (GetTempPathW(MAX_PATH + 1, folder) == 0 || GetTempFileNameW(folder, L"tw", 0, path) == 0) {
    return last_system_error();
  }
  path_ = narrow(path);
  const Handle file = file_handle(
      CreateFileW(path, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return last_system_error();
  return write_bytes(file.get(), bytes);
}

}  // namespace tallowmere::win32
