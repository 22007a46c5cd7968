#include "win32/dropped_files.h"

#include <shellapi.h>

#include "win32/text.h"

namespace tallowmere::win32 {

std::string take_first_dropped(WPARAM drop) {
  const auto files = reinterpret_cast<HDROP>(drop);
  std::wstring path(DragQueryFileW(files, 0, nullptr, 0) + 1, L'\0');
  path.resize(DragQueryFileW(files, 0, path.data(), static_cast<UINT>(path.size())));
  DragFinish(files);
  return narrow(path);
}

}  // namespace tallowmere::win32
