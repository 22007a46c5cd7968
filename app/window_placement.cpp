#include "app/window_placement.h"

#include <algorithm>

#include "shell/layout.h"
#include "win32/dpi.h"

namespace tallowmere {

namespace {

/// Stored numbers can be anything; pixels beyond this are off every screen.
constexpr Twips farthest = 1'000'000'000;

int pixels(Twips twips, int dpi) {
  return static_cast<int>(to_pixels(std::clamp(twips, -farthest, farthest), dpi));
}

TwipRect in_twips(const RECT& rect, int dpi) {
  return {to_twips(rect.left, dpi), to_twips(rect.top, dpi), to_twips(rect.right - rect.left, dpi),
          to_twips(rect.bottom - rect.top, dpi)};
}

/// The part of a screen that windows may cover. The main screen when `rect` is on none.
RECT screen_area(const RECT& rect) {
  HMONITOR monitor = MonitorFromRect(&rect, MONITOR_DEFAULTTONULL);
  if (monitor == nullptr) monitor = MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY);
  MONITORINFO info{};
  info.cbSize = sizeof info;
  GetMonitorInfoW(monitor, &info);
  return info.rcWork;
}

}  // namespace

TwipRect window_rect(HWND window) {
  RECT rect;
  GetWindowRect(window, &rect);
  return in_twips(rect, win32::window_dpi(window));
}

void apply_placement(HWND window, const TwipRect& stored) {
  const int dpi = win32::window_dpi(window);
  const int left = pixels(stored.left, dpi);
  const int top = pixels(stored.top, dpi);
  const RECT wanted{left, top, left + pixels(stored.width, dpi), top + pixels(stored.height, dpi)};
  const TwipRect screen = in_twips(screen_area(wanted), dpi);
  TwipRect relative = stored;
  relative.left -= screen.left;
  relative.top -= screen.top;
  const TwipRect place = place_window(relative, {screen.width, screen.height}, main_window_design);
  SetWindowPos(window, nullptr, pixels(screen.left + place.left, dpi),
               pixels(screen.top + place.top, dpi), pixels(place.width, dpi),
               pixels(place.height, dpi), SWP_NOZORDER | SWP_NOACTIVATE);
}

std::optional<TwipRect> placement_to_store(HWND window) {
  if (IsIconic(window) || IsZoomed(window)) return std::nullopt;
  return window_rect(window);
}

}  // namespace tallowmere
