#pragma once

#include <windows.h>

#include <string_view>

#include "win32/fonts.h"

namespace tallowmere {

/// A window's canvas with its font, for measuring.
class MeasuringCanvas {
 public:
  explicit MeasuringCanvas(HWND window);
  ~MeasuringCanvas();
  MeasuringCanvas(const MeasuringCanvas&) = delete;
  MeasuringCanvas& operator=(const MeasuringCanvas&) = delete;

  /// The size of the text when its lines are broken at `width` pixels.
  SIZE text_size(std::string_view text, int width) const;
  /// The size of the text as draw_link draws it.
  SIZE link_size(std::string_view text, int width) const;

 private:
  HWND window_;
  HDC canvas_;
  HGDIOBJ old_font_;
};

/// The font of a window, underlined or bold.
win32::Font underlined_font(HWND window);
win32::Font bold_font(HWND window);

/// Answers WM_DRAWITEM of a button that looks like a link, with its text `margin` pixels from its
/// edges.
void draw_link(const DRAWITEMSTRUCT& draw, HFONT font, bool visited, int margin);
/// Answers WM_DRAWITEM of a label that looks like a tool tip.
void draw_note(const DRAWITEMSTRUCT& draw, SIZE margin);

}  // namespace tallowmere
