#include "dialogs/help_drawing.h"

#include <string>

#include "win32/controls.h"
#include "win32/text.h"

namespace tallowmere {
namespace {

constexpr UINT text_format = DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS;
constexpr COLORREF link_color = RGB(0, 80, 190);
constexpr COLORREF visited_link_color = RGB(112, 48, 128);

HFONT window_font(HWND window) {
  const HFONT font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
  return font != nullptr ? font : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

LOGFONTW description(HFONT font) {
  LOGFONTW description{};
  GetObjectW(font, sizeof description, &description);
  return description;
}

/// Whether the user has chosen the colours for their contrast, so that ours would be out of place.
bool high_contrast() {
  HIGHCONTRASTW state{};
  state.cbSize = sizeof state;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof state, &state, 0) &&
         (state.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

// The system's own colour for links cannot be read in some of its themes.
COLORREF color_of_link(bool visited) {
  if (high_contrast()) return GetSysColor(visited ? COLOR_BTNTEXT : COLOR_HOTLIGHT);
  return visited ? visited_link_color : link_color;
}

void draw_text(const DRAWITEMSTRUCT& draw, HFONT font, COLORREF color, SIZE margin) {
  const int saved = SaveDC(draw.hDC);
  SelectObject(draw.hDC, font);
  SetBkMode(draw.hDC, TRANSPARENT);
  SetTextColor(draw.hDC, color);
  RECT area = draw.rcItem;
  InflateRect(&area, -margin.cx, -margin.cy);
  const std::wstring text = win32::wide(win32::Control(draw.hwndItem).text());
  DrawTextW(draw.hDC, text.c_str(), static_cast<int>(text.size()), &area, text_format);
  RestoreDC(draw.hDC, saved);
}

}  // namespace

MeasuringCanvas::MeasuringCanvas(HWND window)
    : window_(window),
      canvas_(GetDC(window)),
      old_font_(SelectObject(canvas_, window_font(window))) {}

MeasuringCanvas::~MeasuringCanvas() {
  SelectObject(canvas_, old_font_);
  ReleaseDC(window_, canvas_);
}

SIZE MeasuringCanvas::text_size(std::string_view text, int width) const {
  RECT area{0, 0, width, 0};
  const std::wstring units = win32::wide(text);
  DrawTextW(canvas_, units.c_str(), static_cast<int>(units.size()), &area,
            text_format | DT_CALCRECT);
  return {area.right, area.bottom};
}

OwnedFont underlined_font(HWND window) {
  LOGFONTW font = description(window_font(window));
  font.lfUnderline = TRUE;
  return OwnedFont(CreateFontIndirectW(&font));
}

OwnedFont bold_font(HWND window) {
  LOGFONTW font = description(window_font(window));
  font.lfWeight = FW_BOLD;
  return OwnedFont(CreateFontIndirectW(&font));
}

void draw_link(const DRAWITEMSTRUCT& draw, HFONT font, bool visited, int margin) {
  FillRect(draw.hDC, &draw.rcItem, GetSysColorBrush(COLOR_BTNFACE));
  draw_text(draw, font, color_of_link(visited), {margin, margin});
  if ((draw.itemState & ODS_FOCUS) == 0 || (draw.itemState & ODS_NOFOCUSRECT) != 0) return;
  // Its dots take the text's colour.
  SetTextColor(draw.hDC, GetSysColor(COLOR_BTNTEXT));
  SetBkColor(draw.hDC, GetSysColor(COLOR_BTNFACE));
  DrawFocusRect(draw.hDC, &draw.rcItem);
}

void draw_note(const DRAWITEMSTRUCT& draw, SIZE margin) {
  FillRect(draw.hDC, &draw.rcItem, GetSysColorBrush(COLOR_INFOBK));
  FrameRect(draw.hDC, &draw.rcItem, GetSysColorBrush(COLOR_3DSHADOW));
  draw_text(draw, window_font(draw.hwndItem), GetSysColor(COLOR_INFOTEXT), margin);
}

}  // namespace tallowmere
