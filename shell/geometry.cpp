#include "shell/geometry.h"

#include <algorithm>
#include <cstdlib>

namespace tallowmere {
namespace {

constexpr std::int64_t twips_per_inch = 1440;
constexpr Twips smallest_stored_size = 600;
constexpr Twips snap_tolerance = 15;       // a pixel at 96 dpi
constexpr Twips farthest = 1'000'000'000;  // off every screen

std::int64_t divide_rounded(std::int64_t number, std::int64_t divisor) {
  const std::int64_t half = divisor / 2;
  return (number >= 0 ? number + half : number - half) / divisor;
}

/// True when an edge is beyond the screen's by the hidden frame. Systems round its width.
bool is_snapped(Twips beyond, Twips hidden_frame) {
  return hidden_frame > 0 && std::abs(beyond - hidden_frame) <= snap_tolerance;
}

/// Along one axis, on which a window's frame is hidden at its near side and at its far side.
struct Axis {
  Twips screen, hidden_near, hidden_far;

  Twips size(Twips stored, Twips design) const {
    const bool snapped = is_snapped(stored - screen, hidden_near + hidden_far);
    const bool fits = stored <= screen || snapped;
    return stored < smallest_stored_size || !fits ? design : stored;
  }

  Twips corner(Twips stored, Twips size) const {
    if (is_snapped(size - screen, hidden_near + hidden_far)) return -hidden_near;
    const bool near = stored > 0 || is_snapped(-stored, hidden_near);
    const bool far = stored <= screen - size || is_snapped(stored + size - screen, hidden_far);
    return near && far ? stored : (screen - size) / 2;
  }
};

std::int64_t overlap(const PixelRect& a, const PixelRect& b) {
  const std::int64_t width = std::min(a.right(), b.right()) - std::max(a.left, b.left);
  const std::int64_t height = std::min(a.bottom(), b.bottom()) - std::max(a.top, b.top);
  return std::max<std::int64_t>(width, 0) * std::max<std::int64_t>(height, 0);
}

/// Limits the stored numbers, which can be anything.
TwipRect within_reach(TwipRect stored) {
  for (Twips* length : {&stored.left, &stored.top, &stored.width, &stored.height}) {
    *length = std::clamp(*length, -farthest, farthest);
  }
  return stored;
}

/// The screen that most of the stored window is on, read with that screen's own resolution.
const Screen& screen_of(const TwipRect& stored, std::span<const Screen> screens, int system_dpi) {
  const Screen* best = &screens.front();
  std::int64_t most = 0;
  for (const Screen& screen : screens) {
    const PixelRect window{to_pixels(stored.left, system_dpi), to_pixels(stored.top, system_dpi),
                           std::max<std::int64_t>(to_pixels(stored.width, screen.dpi), 1),
                           std::max<std::int64_t>(to_pixels(stored.height, screen.dpi), 1)};
    const std::int64_t here = overlap(window, screen.area);
    if (here <= most) continue;
    most = here;
    best = &screen;
  }
  return *best;
}

/// Places the window, in twips, on a screen whose corner is at 0, 0.
TwipRect place_window(const TwipRect& stored, const TwipSize& screen, const TwipSize& design,
                      Twips hidden_frame) {
  const Axis across{screen.width, hidden_frame, hidden_frame};
  const Axis down{screen.height, 0, hidden_frame};
  TwipRect place;
  place.height = down.size(stored.height, design.height);
  place.width = across.size(stored.width, design.width);
  place.left = across.corner(stored.left, place.width);
  place.top = down.corner(stored.top, place.height);
  return place;
}

}  // namespace

std::int64_t to_pixels(Twips twips, int dpi) {
  return divide_rounded(twips * dpi, twips_per_inch);
}

Twips to_twips(std::int64_t pixels, int dpi) {
  return divide_rounded(pixels * twips_per_inch, dpi);
}

TwipRect stored_placement(const PixelRect& window, int dpi, int system_dpi) {
  return {to_twips(window.left, system_dpi), to_twips(window.top, system_dpi),
          to_twips(window.width, dpi), to_twips(window.height, dpi)};
}

PixelRect place_on_desktop(const TwipRect& stored, std::span<const Screen> screens, int system_dpi,
                           const TwipSize& design) {
  TwipRect relative = within_reach(stored);
  const Screen& screen = screen_of(relative, screens, system_dpi);
  const PixelRect& area = screen.area;
  const int dpi = screen.dpi;
  const auto of_screen = [&](Twips corner, std::int64_t origin) {
    return divide_rounded((corner - to_twips(origin, system_dpi)) * system_dpi, dpi);
  };
  relative.left = of_screen(relative.left, area.left);
  relative.top = of_screen(relative.top, area.top);
  const TwipRect place =
      place_window(relative, {to_twips(area.width, dpi), to_twips(area.height, dpi)}, design,
                   to_twips(screen.hidden_frame, dpi));
  return {area.left + to_pixels(place.left, dpi), area.top + to_pixels(place.top, dpi),
          to_pixels(place.width, dpi), to_pixels(place.height, dpi)};
}

}  // namespace tallowmere
