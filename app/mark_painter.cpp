#include "app/mark_painter.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

namespace tallowmere {

namespace {

/// The share of the selection's colour in the background of a mark.
constexpr int tint_percent = 30;
/// A line is so many times as high as the underline of a mark.
constexpr int underline_part = 8;

bool high_contrast() {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof contrast;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != FALSE &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

std::array<int, 3> channels(COLORREF color) {
  return {GetBValue(color), GetGValue(color), GetRValue(color)};
}

/// The colour of every pixel of text on a mark. Between text and background, as at the smoothed
/// edges of letters, every channel keeps its share of both.
class Tint {
 public:
  Tint(COLORREF text, COLORREF background) {
    const auto from = channels(background);
    const auto to = channels(text);
    const auto tone = channels(GetSysColor(COLOR_HIGHLIGHT));
    for (std::size_t i = 0; i < from.size(); ++i) {
      const int mark = from[i] + (tone[i] - from[i]) * tint_percent / 100;
      for (int value = 0; value < 256; ++value) {
        const int full = to[i] - from[i];
        const int moved = full == 0 ? mark : mark + (value - from[i]) * (to[i] - mark) / full;
        table_[i][static_cast<std::size_t>(value)] =
            static_cast<std::uint8_t>(std::clamp(moved, 0, 255));
      }
    }
  }

  std::uint32_t operator()(std::uint32_t pixel) const {
    return table_[0][pixel & 0xFF] | std::uint32_t{table_[1][pixel >> 8 & 0xFF]} << 8 |
           std::uint32_t{table_[2][pixel >> 16 & 0xFF]} << 16;
  }

 private:
  std::array<std::array<std::uint8_t, 256>, 3> table_{};
};

std::uint32_t solid_highlight(std::uint32_t) {
  const auto color = channels(GetSysColor(COLOR_HIGHLIGHT));
  return static_cast<std::uint32_t>(color[0] | color[1] << 8 | color[2] << 16);
}

}  // namespace

/// The pixels of an area of a window, in memory; the window's coordinates hold for them. Empty when
/// the system has no memory for it.
class MarkPainter::Bitmap {
 public:
  Bitmap(HDC screen, const RECT& area) : area_(area), canvas_(CreateCompatibleDC(screen)) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader,
                      area.right - area.left,
                      area.top - area.bottom,
                      1,
                      32,
                      BI_RGB,
                      0,
                      0,
                      0,
                      0,
                      0};
    void* bits = nullptr;
    bitmap_ = CreateDIBSection(canvas_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bitmap_ == nullptr) return;
    pixels_ = static_cast<std::uint32_t*>(bits);
    old_bitmap_ = SelectObject(canvas_, bitmap_);
    SetViewportOrgEx(canvas_, -area.left, -area.top, nullptr);
  }
  ~Bitmap() {
    if (bitmap_ != nullptr) {
      SelectObject(canvas_, old_bitmap_);
      DeleteObject(bitmap_);
    }
    DeleteDC(canvas_);
  }
  Bitmap(const Bitmap&) = delete;
  Bitmap& operator=(const Bitmap&) = delete;

  explicit operator bool() const { return bitmap_ != nullptr; }
  HDC canvas() const { return canvas_; }

  /// Recolours the pixels of a rectangle, as far as they are here.
  template <class Change>
  void change(const RECT& rectangle, const Change& change) const {
    RECT part;
    if (!IntersectRect(&part, &rectangle, &area_)) return;
    const LONG width = area_.right - area_.left;
    for (LONG y = part.top; y < part.bottom; ++y) {
      std::uint32_t* row = pixels_ + (y - area_.top) * width - area_.left;
      std::transform(row + part.left, row + part.right, row + part.left, change);
    }
  }

 private:
  RECT area_;
  HDC canvas_;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ old_bitmap_ = nullptr;
  std::uint32_t* pixels_ = nullptr;
};

void MarkPainter::paint(const PaintText& paint_text, const Marks& marks) const {
  PAINTSTRUCT painting;
  const HDC screen = BeginPaint(box_.handle(), &painting);
  const RECT area = painting.rcPaint;
  if (screen != nullptr && !IsRectEmpty(&area)) {
    const Bitmap bitmap(screen, area);
    const HDC canvas = bitmap ? bitmap.canvas() : screen;
    // A box that cannot be written to asks for its colours as a label does.
    const auto brush = reinterpret_cast<HBRUSH>(
        SendMessageW(GetParent(box_.handle()), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(canvas),
                     reinterpret_cast<LPARAM>(box_.handle())));
    const Colors colors{GetTextColor(canvas), GetBkColor(canvas)};
    FillRect(canvas, &area, brush);
    paint_text(canvas);
    if (bitmap) {
      if (box_.enabled()) mark_lines(bitmap, area, colors, marks);
      BitBlt(screen, area.left, area.top, area.right - area.left, area.bottom - area.top, canvas,
             area.left, area.top, SRCCOPY);
    }
  }
  EndPaint(box_.handle(), &painting);
}

void MarkPainter::mark_lines(const Bitmap& bitmap, const RECT& area, const Colors& colors,
                             const Marks& marks) const {
  const RECT text_area = box_.text_area();
  const int height = box_.line_height();
  const auto lines_to = [&](LONG y) { return std::max(static_cast<int>(y - text_area.top), 0); };
  const int top = box_.first_visible_line();
  const int first = top + lines_to(area.top) / height;
  const int below = lines_to(std::min(area.bottom, text_area.bottom)) + height - 1;
  const int end = std::min(top + below / height, box_.line_count());
  if (first >= end) return;
  const int length = GetWindowTextLengthW(box_.handle());
  const int to = end < box_.line_count() ? box_.line_index(end) : length;
  const auto stretches = without_selection(marks(box_.line_index(first), to));
  if (stretches.empty()) return;
  const HGDIOBJ old_font = SelectObject(bitmap.canvas(), box_.font());
  GdiFlush();
  const Tint tint(colors.text, colors.background);
  const bool underline = high_contrast();
  for (int line = first; line < end; ++line) {
    for (RECT mark : mark_places(bitmap.canvas(), line, stretches)) {
      mark.bottom = mark.top + height;
      if (underline) mark.top = mark.bottom - std::max(height / underline_part, 1);
      if (!IntersectRect(&mark, &mark, &text_area)) continue;
      underline ? bitmap.change(mark, solid_highlight) : bitmap.change(mark, tint);
    }
  }
  SelectObject(bitmap.canvas(), old_font);
}

std::vector<TextSelection> MarkPainter::without_selection(
    const std::vector<TextSelection>& marks) const {
  const int start = box_.selection_start();
  const int end = start + box_.selection_length();
  std::vector<TextSelection> rest;
  const auto add = [&rest](int from, int to) {
    if (from < to) rest.push_back({from, to - from});
  };
  for (const TextSelection& mark : marks) {
    const int mark_end = mark.start + mark.length;
    add(mark.start, std::min(mark_end, start));
    add(std::max(mark.start, end), mark_end);
  }
  return rest;
}

/// Where the stretches are in a line; the bottoms are left open.
std::vector<RECT> MarkPainter::mark_places(HDC canvas, int line,
                                           const std::vector<TextSelection>& stretches) const {
  const int start = box_.line_index(line);
  const int text_end = start + box_.line_length(line);
  auto stretch = std::ranges::upper_bound(
      stretches, start, {}, [](const TextSelection& mark) { return mark.start + mark.length; });
  std::vector<RECT> places;
  for (; stretch != stretches.end() && stretch->start < text_end; ++stretch) {
    const int from = std::max(stretch->start, start);
    const int to = std::min(stretch->start + stretch->length, text_end);
    const auto left = box_.character_place(from);
    if (!left) continue;
    const auto behind = box_.character_place(to);
    const LONG right = behind && behind->y == left->y ? behind->x : line_end(canvas, line, to);
    places.push_back({std::min(left->x, right), left->y, std::max(left->x, right), 0});
  }
  return places;
}

/// The right edge of a line's last character, after which no other one of the line has a place.
LONG MarkPainter::line_end(HDC canvas, int line, int end) const {
  const std::wstring text = box_.line_units(line);
  const std::size_t last = IS_LOW_SURROGATE(text.back()) && text.size() > 1 ? 2 : 1;
  SIZE size{};
  GetTextExtentPoint32W(canvas, text.c_str() + (text.size() - last), static_cast<int>(last), &size);
  const auto left = box_.character_place(end - static_cast<int>(last));
  return left ? left->x + size.cx : 0;
}

}  // namespace tallowmere
