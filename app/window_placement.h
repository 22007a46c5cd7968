#pragma once

#include <windows.h>

#include <optional>

#include "shell/geometry.h"

namespace tallowmere {

/// The window's place on the screen in twips.
TwipRect window_rect(HWND window);

/// Moves and sizes the main window to its stored placement, corrected for the screen that it was
/// on; to the middle of the main screen when nothing is stored or that screen is gone.
void apply_placement(HWND window, const TwipRect& stored);

/// What is to be stored: nothing while the window is minimised or maximised.
std::optional<TwipRect> placement_to_store(HWND window);

/// Answers WM_GETMINMAXINFO: the main window's least size at its DPI.
void limit_size(HWND main_window, MINMAXINFO& limits);

}  // namespace tallowmere
