#pragma once

#include <cstdint>
#include <span>

namespace tallowmere {

/// A length in twips, 1/1440 inch.
using Twips = std::int64_t;

struct TwipSize {
  Twips width = 0;
  Twips height = 0;
};

struct TwipRect {
  Twips left = 0;
  Twips top = 0;
  Twips width = 0;
  Twips height = 0;
  Twips right() const { return left + width; }
  Twips bottom() const { return top + height; }
  bool operator==(const TwipRect&) const = default;
};

/// The same in pixels.
using PixelRect = TwipRect;

/// What windows may cover of one of the desktop's screens.
struct Screen {
  PixelRect area;
  int dpi = 0;
  int hidden_frame = 0;  ///< pixels of a window's frame that nobody sees: left, right and below
};

/// Rounded to the nearest pixel or twip, halves away from zero; `dpi` is the window's.
std::int64_t to_pixels(Twips twips, int dpi);
Twips to_twips(std::int64_t pixels, int dpi);

/// A window on a screen of `dpi` as it is stored: its size as it looks there, its corner in the
/// measure of the whole desktop, which `system_dpi` gives.
TwipRect stored_placement(const PixelRect& window, int dpi, int system_dpi);

/// Where the main window opens: the stored placement, with sizes that are too small or larger than
/// the screen replaced by the design's and a corner at 0, below 0 or too far off centred again.
/// Where the system has snapped a window to an edge of the screen, it may reach beyond it by its
/// hidden frame. Its screen is the one that most of the stored window is on; the first one when it
/// is on none.
PixelRect place_on_desktop(const TwipRect& stored, std::span<const Screen> screens, int system_dpi,
                           const TwipSize& design);

}  // namespace tallowmere
