#include "dialogs/help_drawing.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

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

/// The lines of a link in the canvas's font; spaces at their ends take no room.
std::vector<std::wstring> link_lines(HDC canvas, std::wstring text, int width) {
  std::vector<std::wstring> lines;
  while (true) {
    text.erase(0, text.find_first_not_of(L' '));
    if (text.empty()) return lines;
    int fitting = 0;
    SIZE size;
    const int length = static_cast<int>(text.size());
    GetTextExtentExPointW(canvas, text.c_str(), length, width, &fitting, nullptr, &size);
    std::size_t end = text.size();
    if (fitting < length) {
      end = text.rfind(L' ', static_cast<std::size_t>(fitting));
      if (end == std::wstring::npos) end = static_cast<std::size_t>(std::max(fitting, 1));
    }
    const std::wstring line = text.substr(0, end);
    lines.push_back(line.substr(0, line.find_last_not_of(L' ') + 1));
    text.erase(0, end);
  }
}

/// Where each character ends, from the line's left edge.
std::vector<int> character_ends(HDC canvas, const std::wstring& line) {
  std::vector<int> ends(line.size());
  SIZE size;
  GetTextExtentExPointW(canvas, line.c_str(), static_cast<int>(line.size()), 0, nullptr,
                        ends.data(), &size);
  return ends;
}

int line_height(HDC canvas) {
  TEXTMETRICW metrics{};
  GetTextMetricsW(canvas, &metrics);
  return static_cast<int>(metrics.tmHeight);
}

/// Draws each character where it was measured to be: a system that draws a text narrower than
/// it measures it would underline more than the text.
void draw_link_text(HDC canvas, RECT area, const std::wstring& text) {
  int top = static_cast<int>(area.top);
  const int width = static_cast<int>(area.right - area.left);
  for (const std::wstring& line : link_lines(canvas, text, width)) {
    std::vector<int> widths = character_ends(canvas, line);
    std::adjacent_difference(widths.begin(), widths.end(), widths.begin());
    ExtTextOutW(canvas, static_cast<int>(area.left), top, 0, nullptr, line.c_str(),
                static_cast<UINT>(line.size()), widths.data());
    top += line_height(canvas);
  }
}

void draw_note_text(HDC canvas, RECT area, const std::wstring& text) {
  DrawTextW(canvas, text.c_str(), static_cast<int>(text.size()), &area, text_format);
}

using TextDrawing = void(HDC canvas, RECT area, const std::wstring& text);

void draw_text(const DRAWITEMSTRUCT& draw, HFONT font, COLORREF color, SIZE margin,
               TextDrawing* draw_lines) {
  const int saved = SaveDC(draw.hDC);
  SelectObject(draw.hDC, font);
  SetBkMode(draw.hDC, TRANSPARENT);
  SetTextColor(draw.hDC, color);
  RECT area = draw.rcItem;
  InflateRect(&area, -margin.cx, -margin.cy);
  draw_lines(draw.hDC, area, win32::Control(draw.hwndItem).units());
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

SIZE MeasuringCanvas::link_size(std::string_view text, int width) const {
  const std::vector<std::wstring> lines = link_lines(canvas_, win32::wide(text), width);
  SIZE size{0, line_height(canvas_) * static_cast<LONG>(lines.size())};
  for (const std::wstring& line : lines) {
    size.cx = std::max<LONG>(size.cx, character_ends(canvas_, line).back());
  }
  return size;
}

win32::Font underlined_font(HWND window) {
  LOGFONTW font = description(window_font(window));
  font.lfUnderline = TRUE;
  return win32::Font(font);
}

win32::Font bold_font(HWND window) {
  LOGFONTW font = description(window_font(window));
  font.lfWeight = FW_BOLD;
  return win32::Font(font);
}

void draw_link(const DRAWITEMSTRUCT& draw, HFONT font, bool visited, int margin) {
  FillRect(draw.hDC, &draw.rcItem, GetSysColorBrush(COLOR_BTNFACE));
  draw_text(draw, font, color_of_link(visited), {margin, margin}, &draw_link_text);
  if ((draw.itemState & ODS_FOCUS) == 0 || (draw.itemState & ODS_NOFOCUSRECT) != 0) return;
  // Its dots take the text's colour.
  SetTextColor(draw.hDC, GetSysColor(COLOR_BTNTEXT));
  SetBkColor(draw.hDC, GetSysColor(COLOR_BTNFACE));
  DrawFocusRect(draw.hDC, &draw.rcItem);
}

void draw_note(const DRAWITEMSTRUCT& draw, SIZE margin) {
  FillRect(draw.hDC, &draw.rcItem, GetSysColorBrush(COLOR_INFOBK));
  FrameRect(draw.hDC, &draw.rcItem, GetSysColorBrush(COLOR_3DSHADOW));
  draw_text(draw, window_font(draw.hwndItem), GetSysColor(COLOR_INFOTEXT), margin, &draw_note_text);
}

}  // namespace tallowmere
