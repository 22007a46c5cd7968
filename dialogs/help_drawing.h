#pragma once

#include <windows.h>

#include <memory>
#include <string_view>
#include <type_traits>

namespace tallowmere {

struct FontDeleter {
  void operator()(HFONT font) const { DeleteObject(font); }
};
using OwnedFont = std::unique_ptr<std::remove_pointer_t<HFONT>, FontDeleter>;

/// A window's canvas with its font, for measuring.
class MeasuringCanvas {
 public:
  explicit MeasuringCanvas(HWND window);
  ~MeasuringCanvas();
  MeasuringCanvas(const MeasuringCanvas&) = delete;
  MeasuringCanvas& operator=(const MeasuringCanvas&) = delete;

  /// What the text takes when its lines are broken at `width` pixels.
  SIZE text_size(std::string_view text, int width) const;
  /// What draw_link takes for it.
  SIZE link_size(std::string_view text, int width) const;

 private:
  HWND window_;
  HDC canvas_;
  HGDIOBJ old_font_;
};

/// The font of a window, underlined or bold.
OwnedFont underlined_font(HWND window);
OwnedFont bold_font(HWND window);

/// Answers WM_DRAWITEM of a button that looks like a link, with its text `margin` pixels from its
/// edges.
void draw_link(const DRAWITEMSTRUCT& draw, HFONT font, bool visited, int margin);
/// Answers WM_DRAWITEM of a label that looks like a tool tip.
void draw_note(const DRAWITEMSTRUCT& draw, SIZE margin);

}  // namespace tallowmere
