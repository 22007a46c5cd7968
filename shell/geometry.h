#pragma once

#include <cstdint>

namespace tallowmere {

/// A length in twips, 1/1440 inch.
using Twips = std::int64_t;

struct TwipSize {
  Twips width = 0;
  Twips height = 0;
  bool operator==(const TwipSize&) const = default;
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

/// Rounded to the nearest pixel or twip, halves away from zero; `dpi` is the window's.
std::int64_t to_pixels(Twips twips, int dpi);
Twips to_twips(std::int64_t pixels, int dpi);

/// Where the main window opens: the stored placement, with sizes that are too small or larger than
/// the screen replaced by the design's and a corner at 0, below 0 or too far off centred again.
TwipRect place_window(const TwipRect& stored, const TwipSize& screen, const TwipSize& design);

/// A dialog's place: the middle of the main window, kept on the screen. Any unit.
TwipRect center_form(const TwipRect& main, const TwipSize& dialog, const TwipSize& screen);

}  // namespace tallowmere
