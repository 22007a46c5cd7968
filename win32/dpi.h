#pragma once

#include <windows.h>

namespace tallowmere::win32 {

/// Returns the dots per inch of the window's screen; the system's where Windows knows no other.
int window_dpi(HWND window);
/// Returns the dots per inch with which the program was started.
int system_dpi();

/// Returns the dots per inch of a screen, as far as Windows lets the program know.
int monitor_dpi(HMONITOR monitor);

/// Returns how many pixels at the left, right and lower edge of a window belong to its frame, where
/// the mouse can drag it, but are not painted. Windows before 10 paints all of it.
int hidden_frame(int dpi);

/// Scales a length that was drawn for 96 dots per inch.
inline int scale(int pixels_at_96, int dpi) {
  return MulDiv(pixels_at_96, dpi, 96);
}

/// Calls GetSystemMetrics for a given screen resolution.
int metrics(int index, int dpi);

}  // namespace tallowmere::win32
