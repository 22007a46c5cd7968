#include "app/window_placement.h"

#include <vector>

#include "shell/layout.h"
#include "win32/dpi.h"

namespace tallowmere {

namespace {

PixelRect rect_of(const RECT& rect) {
  return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

PixelRect pixel_rect(HWND window) {
  RECT rect;
  GetWindowRect(window, &rect);
  return rect_of(rect);
}

BOOL CALLBACK add_screen(HMONITOR monitor, HDC, LPRECT, LPARAM screens) {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  if (!GetMonitorInfoW(monitor, &info)) return TRUE;
  const int dpi = win32::monitor_dpi(monitor);
  const Screen screen{rect_of(info.rcWork), dpi, win32::hidden_frame(dpi)};
  auto& all = *reinterpret_cast<std::vector<Screen>*>(screens);
  const bool primary = (info.dwFlags & MONITORINFOF_PRIMARY) != 0;
  all.insert(primary ? all.begin() : all.end(), screen);
  return TRUE;
}

/// The desktop's screens, the main one first.
std::vector<Screen> desktop_screens() {
  std::vector<Screen> screens;
  EnumDisplayMonitors(nullptr, nullptr, &add_screen, reinterpret_cast<LPARAM>(&screens));
  return screens;
}

}  // namespace

TwipRect window_rect(HWND window) {
  const int dpi = win32::window_dpi(window);
  return stored_placement(pixel_rect(window), dpi, dpi);
}

void apply_placement(HWND window, const TwipRect& stored) {
  const std::vector<Screen> screens = desktop_screens();
  if (screens.empty()) return;
  const PixelRect place =
      place_on_desktop(stored, screens, win32::system_dpi(), main_window_design);
  // The system gives a window that comes to a screen of another DPI another size on the way.
  for (int i = 0; i < 2; ++i) {
    SetWindowPos(window, nullptr, static_cast<int>(place.left), static_cast<int>(place.top),
                 static_cast<int>(place.width), static_cast<int>(place.height),
                 SWP_NOZORDER | SWP_NOACTIVATE);
  }
}

std::optional<TwipRect> placement_to_store(HWND window) {
  if (IsIconic(window) || IsZoomed(window)) return std::nullopt;
  return stored_placement(pixel_rect(window), win32::window_dpi(window), win32::system_dpi());
}

void limit_size(HWND main_window, MINMAXINFO& limits) {
  const int dpi = win32::window_dpi(main_window);
  limits.ptMinTrackSize.x = static_cast<LONG>(to_pixels(main_window_minimum.width, dpi));
  limits.ptMinTrackSize.y = static_cast<LONG>(to_pixels(main_window_minimum.height, dpi));
}

}  // namespace tallowmere
