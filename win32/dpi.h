#pragma once

#include <windows.h>

namespace tallowmere::win32 {

/// Dots per inch of the screen the window stands on; the system's where Windows knows no other.
int window_dpi(HWND window);
/// Dots per inch the program was started with.
int system_dpi();

/// Dots per inch of a screen, as far as Windows lets the program know.
int monitor_dpi(HMONITOR monitor);

/// Pixels at the left, the right and the lower edge of a window that belong to its frame, where it
/// is grasped, and are not painted. Windows before 10 paints all of it.
int hidden_frame(int dpi);

/// A length drawn for 96 dots per inch.
inline int scale(int pixels_at_96, int dpi) {
  return MulDiv(pixels_at_96, dpi, 96);
}

/// GetSystemMetrics for a given screen resolution.
int metrics(int index, int dpi);

}  // namespace tallowmere::win32
