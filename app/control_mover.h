#pragma once

#include <windows.h>

#include "shell/geometry.h"

namespace tallowmere {

/// Moves several controls at once, in its destructor, so that they are repainted once.
class ControlMover {
 public:
  ControlMover(int count, int dpi) : moves_(BeginDeferWindowPos(count)), dpi_(dpi) {}
  ~ControlMover() {
    if (moves_ != nullptr) EndDeferWindowPos(moves_);
  }
  ControlMover(const ControlMover&) = delete;
  ControlMover& operator=(const ControlMover&) = delete;

  void move(HWND control, const TwipRect& place) {
    // Edges are rounded, not lengths: neighbours stay neighbours at every resolution.
    move(control, place, pixels(place.bottom()) - pixels(place.top));
  }

  /// Moves an etched line, which is two pixels thin at every resolution.
  void move_line(HWND line, const TwipRect& place) { move(line, place, 2); }

 private:
  void move(HWND control, const TwipRect& place, int height) {
    if (moves_ == nullptr) return;
    const int left = pixels(place.left);
    moves_ = DeferWindowPos(moves_, control, nullptr, left, pixels(place.top),
                            pixels(place.right()) - left, height,
                            SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
  }
  int pixels(Twips twips) const { return static_cast<int>(to_pixels(twips, dpi_)); }

  HDWP moves_;
  int dpi_;
};

}  // namespace tallowmere
