#include "shell/geometry.h"

namespace tallowmere {
namespace {

constexpr std::int64_t twips_per_inch = 1440;
constexpr Twips smallest_stored_size = 600;

std::int64_t divide_rounded(std::int64_t number, std::int64_t divisor) {
  const std::int64_t half = divisor / 2;
  return (number >= 0 ? number + half : number - half) / divisor;
}

Twips stored_size(Twips stored, Twips screen, Twips design) {
  return stored < smallest_stored_size || stored > screen ? design : stored;
}

Twips stored_corner(Twips stored, Twips size, Twips screen) {
  return stored <= 0 || stored > screen - size ? (screen - size) / 2 : stored;
}

Twips centred_corner(Twips main_corner, Twips main_size, Twips size, Twips screen) {
  Twips corner = main_corner + (main_size - size) / 2;
  if (corner < 0) corner = 0;
  if (corner + size > screen) corner = screen - size;
  return corner;
}

}  // namespace

std::int64_t to_pixels(Twips twips, int dpi) {
  return divide_rounded(twips * dpi, twips_per_inch);
}

Twips to_twips(std::int64_t pixels, int dpi) {
  return divide_rounded(pixels * twips_per_inch, dpi);
}

TwipRect place_window(const TwipRect& stored, const TwipSize& screen, const TwipSize& design) {
  TwipRect place;
  place.height = stored_size(stored.height, screen.height, design.height);
  place.width = stored_size(stored.width, screen.width, design.width);
  place.left = stored_corner(stored.left, place.width, screen.width);
  place.top = stored_corner(stored.top, place.height, screen.height);
  return place;
}

TwipRect center_form(const TwipRect& main, const TwipSize& dialog, const TwipSize& screen) {
  return {centred_corner(main.left, main.width, dialog.width, screen.width),
          centred_corner(main.top, main.height, dialog.height, screen.height), dialog.width,
          dialog.height};
}

}  // namespace tallowmere
