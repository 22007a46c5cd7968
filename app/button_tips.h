#pragma once

#include <windows.h>

#include "win32/tooltip.h"

namespace tallowmere {

/// Sets the tips that the main window's row of buttons has at first.
void set_button_tips(win32::ToolTip& tips, HWND main_window);

}  // namespace tallowmere
