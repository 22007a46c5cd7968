#pragma once

#include <windows.h>

#include "win32/tooltip.h"

namespace tallowmere {

/// The tips of the main window's row of buttons, as they are at first.
void set_button_tips(win32::ToolTip& tips, HWND main_window);

}  // namespace tallowmere
