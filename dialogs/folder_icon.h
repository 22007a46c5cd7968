#pragma once

#include <windows.h>

namespace tallowmere {

/// Draws an open or closed folder that fills the square `area`.
void draw_folder_icon(HDC canvas, const RECT& area, bool open);

}  // namespace tallowmere
