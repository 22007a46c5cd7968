#include "dialogs/folder_icon.h"

namespace tallowmere {
namespace {

constexpr COLORREF back_color = RGB(226, 176, 73);
constexpr COLORREF front_color = RGB(250, 214, 120);
constexpr COLORREF edge_color = RGB(146, 104, 24);

/// Draws a shape whose corners are given on a grid of 16 by 16.
template <int count>
void draw_shape(HDC canvas, const RECT& area, const POINT (&corners)[count], COLORREF color) {
  POINT points[count];
  for (int i = 0; i < count; ++i) {
    points[i].x = area.left + MulDiv(corners[i].x, area.right - area.left - 1, 15);
    points[i].y = area.top + MulDiv(corners[i].y, area.bottom - area.top - 1, 15);
  }
  SetDCBrushColor(canvas, color);
  Polygon(canvas, points, count);
}

}  // namespace

void draw_folder_icon(HDC canvas, const RECT& area, bool open) {
  static constexpr POINT back[] = {{1, 13}, {1, 3}, {6, 3}, {8, 5}, {14, 5}, {14, 13}};
  static constexpr POINT closed_front[] = {{1, 13}, {1, 7}, {14, 7}, {14, 13}};
  static constexpr POINT open_front[] = {{1, 13}, {4, 8}, {15, 8}, {13, 13}};
  const int saved = SaveDC(canvas);
  SelectObject(canvas, GetStockObject(DC_BRUSH));
  SelectObject(canvas, GetStockObject(DC_PEN));
  SetDCPenColor(canvas, edge_color);
  draw_shape(canvas, area, back, back_color);
  draw_shape(canvas, area, open ? open_front : closed_front, front_color);
  RestoreDC(canvas, saved);
}

}  // namespace tallowmere
