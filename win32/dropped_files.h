#pragma once

#include <windows.h>

#include <string>

namespace tallowmere::win32 {

/// Takes over the files of WM_DROPFILES, whose wParam is `drop`, and returns the path of the first
/// file or folder in UTF-8; empty when there is none.
std::string take_first_dropped(WPARAM drop);

}  // namespace tallowmere::win32
