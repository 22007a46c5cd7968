#pragma once

#include <windows.h>

#include "shell/layout.h"

namespace tallowmere {

/// Places the main window's controls, except those in the row of file information.
void place_controls(HWND main_window, const MainLayout& layout, int dpi);

}  // namespace tallowmere
