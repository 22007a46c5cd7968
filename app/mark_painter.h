#pragma once

#include <windows.h>

#include <functional>
#include <vector>

#include "viewer/viewer_host.h"
#include "win32/controls.h"

namespace tallowmere {

/// Paints a multi-line text box with stretches of its text marked: on a soft background made of the
/// system's colours, or underlined when the user has chosen high contrast. The box itself paints
/// into memory, the marks are put there, and the whole comes to the screen at once.
class MarkPainter {
 public:
  /// The stretches to mark between two characters, the second one excluded; in ascending order.
  using Marks = std::function<std::vector<TextSelection>(int from, int to)>;
  /// The box's own painting, into a bitmap.
  using PaintText = std::function<void(HDC)>;

  /// Asks `box` many questions; the box outlives this object.
  explicit MarkPainter(const win32::TextBox& box) : box_(box) {}

  /// Handles WM_PAINT. The selection shows as the box paints it.
  void paint(const PaintText& paint_text, const Marks& marks) const;

 private:
  struct Colors {
    COLORREF text;
    COLORREF background;
  };
  class Bitmap;

  void mark_lines(const Bitmap& bitmap, const RECT& area, const Colors& colors,
                  const Marks& marks) const;
  std::vector<TextSelection> without_selection(const std::vector<TextSelection>& marks) const;
  std::vector<RECT> mark_places(HDC canvas, int line,
                                const std::vector<TextSelection>& stretches) const;
  LONG line_end(HDC canvas, int line, int end) const;

  const win32::TextBox& box_;
};

}  // namespace tallowmere
