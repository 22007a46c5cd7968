#pragma once

#include <windows.h>

#include <string>

namespace tallowmere::win32 {

/// Takes what WM_DROPFILES, whose wParam this is, has brought: the path of the first file or
/// folder, UTF-8. Empty when there is none.
std::string take_first_dropped(WPARAM drop);

}  // namespace tallowmere::win32
