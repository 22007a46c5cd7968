#include "app/viewer_box.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "viewer/character_text.h"
#include "win32/guarded.h"

namespace tallowmere {

namespace {

constexpr UINT_PTR subclass_id = 1;
/// The thumb's length: a fiftieth of the bar, which stays easy to grasp.
constexpr int thumb_page = scroll_maximum / 50;

constexpr WPARAM select_all_character = 1;  ///< Ctrl+A
constexpr WPARAM copy_character = 3;        ///< Ctrl+C

/// WM_SYSTIMER: a text box of Windows scrolls by it while the mouse is dragged out of it.
constexpr UINT system_timer_message = 0x0118;

/// Where a text has longer lines than this, it is put into the box in pieces of this length. Wine
/// measures all of the rest of a line for each row that it takes: seconds for a chunk in one go.
constexpr std::size_t quick_line = 800;

std::size_t longest_line(const std::wstring& units) {
  std::size_t longest = 0;
  std::size_t start = 0;
  for (std::size_t end; (end = units.find(L'\n', start)) != std::wstring::npos; start = end + 1) {
    longest = std::max(longest, end - start);
  }
  return std::max(longest, units.size() - start);
}

bool is_second_of_pair(const std::wstring& units, std::size_t at) {
  return at > 0 && at < units.size() && IS_SURROGATE_PAIR(units[at - 1], units[at]);
}

bool is_pressed(int key) {
  return GetKeyState(key) < 0;
}

bool moves_caret(WPARAM key) {
  return key >= VK_PRIOR && key <= VK_DOWN;  // with End, Home, and the arrows between
}

bool moves_down(WPARAM key) {
  return key == VK_DOWN || key == VK_NEXT || key == VK_RIGHT || key == VK_END;
}

/// Lines for a notch of the wheel, at most those on view.
int wheel_lines(int visible) {
  UINT lines = 3;
  SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
  return static_cast<int>(std::min(lines, static_cast<UINT>(visible)));  // WHEEL_PAGESCROLL is huge
}

/// Messages that change a text. Some of them do so even when the user cannot.
bool edits(UINT message, WPARAM wparam) {
  switch (message) {
    case WM_CHAR:
      return wparam != copy_character;  // what a text box makes of it harms nothing
    case WM_IME_CHAR:
    case WM_UNICHAR:
    case WM_PASTE:
    case WM_CUT:
    case WM_CLEAR:
    case WM_UNDO:
    case EM_UNDO:
    case EM_REPLACESEL:
    case WM_DROPFILES:
      return true;
    case WM_KEYDOWN:
      return wparam == VK_DELETE || (wparam == VK_INSERT && is_pressed(VK_SHIFT));
  }
  return false;
}

}  // namespace

int WheelSteps::add(int delta, int per_notch) {
  if (per_notch <= 0) return 0;
  // A turn back begins again from 0.
  if ((delta < 0) != (rest_ < 0)) rest_ = 0;
  rest_ += delta * per_notch;
  const int steps = rest_ / WHEEL_DELTA;
  rest_ %= WHEEL_DELTA;
  return steps;
}

ViewerBox::ViewerBox(HWND text_box, HWND scroll_bar, const CodePage& page)
    : TextBox(text_box), VScroll1(scroll_bar), page_(page) {
  SetWindowSubclass(text_box, subclass_proc, subclass_id, reinterpret_cast<DWORD_PTR>(this));
  VScroll1.set_range(scroll_maximum, thumb_page);
  set_limit(0);  // no limit, which would cut a text put in piece by piece
}

ViewerBox::~ViewerBox() {
  RemoveWindowSubclass(handle(), subclass_proc, subclass_id);
}

bool ViewerBox::choose_colors(HWND control, WPARAM canvas, LRESULT& brush) const {
  if (control != handle() || !enabled()) return false;
  SetBkColor(reinterpret_cast<HDC>(canvas), GetSysColor(COLOR_WINDOW));
  SetTextColor(reinterpret_cast<HDC>(canvas), GetSysColor(COLOR_WINDOWTEXT));
  brush = reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
  return true;
}

void ViewerBox::set_text(std::string_view bytes) {
  std::wstring units;
  units.reserve(bytes.size());
  for (const char byte : bytes) {
    units += static_cast<wchar_t>(page_.to_unicode(static_cast<unsigned char>(byte)));
  }
  has_pairs_ = false;
  fill(units);
}

void ViewerBox::set_text(std::u16string_view text) {
  const std::u16string whole = without_lone_halves(text);
  has_pairs_ = std::ranges::any_of(whole, [](char16_t unit) { return IS_HIGH_SURROGATE(unit); });
  fill({whole.begin(), whole.end()});
}

void ViewerBox::fill(const std::wstring& units) {
  has_long_lines_ = longest_line(units) > quick_line;
  if (!has_long_lines_) {
    set_units(units);
    return;
  }
  set_redraw(false);
  filling_ = true;
  set_units({});
  for (std::size_t from = 0; from < units.size();) {
    std::size_t to = std::min(from + quick_line, units.size());
    // What belongs together stays together.
    if (to < units.size() && (units[to] == L'\n' || IS_LOW_SURROGATE(units[to]))) ++to;
    append_units(units.substr(from, to - from));
    from = to;
  }
  filling_ = false;
  TextBox::select(0, 0);
  scroll_lines(-first_visible_line());
  set_redraw(true);
}

/// Lets `change` break the lines again; a text with long ones is put in again piece by piece.
LRESULT ViewerBox::refill_around(const std::function<LRESULT()>& change) {
  if (!has_long_lines_) return change();
  const std::wstring units = this->units();
  const TextSelection selected = selection();
  const int top = line_index(first_visible_line());
  set_redraw(false);
  set_units({});
  const LRESULT result = change();
  fill(units);
  select(selected.start, selected.length);
  set_first_visible_line(line_from_char(top));
  set_redraw(true);
  return result;
}

TextSelection ViewerBox::selection() const {
  return {quick_.selection_start(), quick_.selection_length()};
}

void ViewerBox::select(int start, int length) {
  // Some systems scroll the caret into view when the selection is set.
  const int top = first_visible_line();
  const TextSelection before = selection();
  TextBox::select(start, start + length);
  if (const int now = first_visible_line(); now != top) scroll_lines(top - now);
  repaint_selection(before);
}

int ViewerBox::visible_lines() const {
  if (line_height_ == 0) line_height_ = line_height();
  return std::max(text_height() / line_height_, 1);
}

void ViewerBox::set_first_visible_line(int line) {
  const int top = std::clamp(line, 0, std::max(line_count() - visible_lines(), 0));
  scroll_lines(top - first_visible_line());
}

void ViewerBox::set_redraw(bool on) {
  redraw_held_ += on ? -1 : 1;
  if (!on && redraw_held_ == 1) send(WM_SETREDRAW, FALSE);
  if (!on || redraw_held_ != 0) return;
  send(WM_SETREDRAW, TRUE);
  RedrawWindow(handle(), nullptr, nullptr, RDW_ERASE | RDW_FRAME | RDW_INVALIDATE);
}

void ViewerBox::enable(bool on) {
  if (!on && before_disable) before_disable();
  TextBox::enable(on);
  VScroll1.enable(on);
}

void ViewerBox::set_scroll_value(int value) {
  if (VScroll1.position() != value) VScroll1.set_position(value);
}

// The system reports only the line that the caret is in, and the place of its mark.
bool ViewerBox::caret_first() const {
  const TextSelection selected = selection();
  if (selected.length == 0) return false;
  const int first = line_from_char(selected.start);
  const int last = line_from_char(selected.start + selected.length);
  if (first != last) return line_index(-1) == line_index(first);
  POINT mark{};
  if (!has_focus() || !GetCaretPos(&mark)) return false;
  const LRESULT start = send(EM_POSFROMCHAR, static_cast<WPARAM>(selected.start));
  return std::abs(mark.x - static_cast<short>(LOWORD(start))) <= 1;
}

LRESULT CALLBACK ViewerBox::subclass_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                          UINT_PTR id, DWORD_PTR box) {
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(window, subclass_proc, id);
    return DefSubclassProc(window, message, wparam, lparam);
  }
  return win32::guarded(LRESULT{0}, [=] {
    return reinterpret_cast<ViewerBox*>(box)->handle_message(message, wparam, lparam);
  });
}

LRESULT ViewerBox::handle_message(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_CHAR && wparam == select_all_character) {
    // Not every system's text box knows Ctrl+A.
    select(0, GetWindowTextLengthW(handle()));
    if (selection_changed) selection_changed();
    return 0;
  }
  if (!filling_ && edits(message, wparam)) return 0;
  switch (message) {
    case WM_GETDLGCODE:
      // Tab leaves the box, and coming back by Tab leaves the selection alone.
      return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_CONTEXTMENU:
      return SendMessageW(GetParent(handle()), message, wparam, lparam);
    case WM_MOUSEWHEEL:
      turn_wheel(wparam);
      return 0;
    case WM_PAINT:
      if (wparam != 0) break;  // into a canvas of somebody else
      paint();
      return 0;
    case WM_ERASEBKGND:
      return TRUE;  // painting leaves nothing out
    case WM_SETFONT:
      line_height_ = 0;
      return refill_around([&] { return pass_on(message, wparam, lparam); });
    case WM_SIZE:
      return refill_around([&] { return pass_on(message, wparam, lparam); });
    case WM_KEYDOWN:
      if (moves_caret(wparam)) key_down(wparam);
      break;
  }
  return pass_on(message, wparam, lparam);
}

/// Lets the text box do its work and reports what came of it.
LRESULT ViewerBox::pass_on(UINT message, WPARAM wparam, LPARAM lparam) {
  const bool dragging =
      GetCapture() == handle() &&
      (message == WM_MOUSEMOVE || message == WM_TIMER || message == system_timer_message);
  const bool may_scroll =
      dragging || message == WM_LBUTTONUP || (message == WM_KEYDOWN && moves_caret(wparam));
  const int top = may_scroll ? first_visible_line() : 0;
  const bool may_select = may_scroll || message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK;
  const TextSelection selected = may_select ? selection() : TextSelection();
  const LRESULT result = DefSubclassProc(handle(), message, wparam, lparam);
  if (may_select) repaint_selection(selected);
  if (message == WM_KEYDOWN && moves_caret(wparam)) take_whole_pairs(moves_down(wparam));
  if (message == WM_LBUTTONUP) take_whole_pairs(!caret_first());
  if (may_scroll && first_visible_line() != top && view_moved) view_moved();
  const bool selects = message == WM_LBUTTONUP || (message == WM_KEYUP && moves_caret(wparam));
  if (selects && selection_changed) selection_changed();
  return result;
}

void ViewerBox::paint() {
  const auto marked = [this](int from, int to) {
    return marks ? marks(from, to) : std::vector<TextSelection>();
  };
  painter_.paint(
      [this](HDC canvas) {
        DefSubclassProc(handle(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas), PRF_CLIENT);
      },
      marked);
}

/// Paints a new selection again: a text box of Windows has painted it at once, without marks.
void ViewerBox::repaint_selection(const TextSelection& before) const {
  const TextSelection now = selection();
  if (now == before || redraw_held_ > 0) return;
  const int end = now.start + now.length;
  const int end_before = before.start + before.length;
  const int from =
      now.start == before.start ? std::min(end, end_before) : std::min(now.start, before.start);
  const int to = end == end_before ? std::max(now.start, before.start) : std::max(end, end_before);
  const int top = first_visible_line();
  RECT lines = text_area();
  lines.bottom = lines.top + (line_from_char(to) + 1 - top) * line_height();
  lines.top += (line_from_char(from) - top) * line_height();
  InvalidateRect(handle(), &lines, FALSE);
}

void ViewerBox::key_down(WPARAM key) {
  if (key == VK_HOME || key == VK_END) {
    if (is_pressed(VK_CONTROL) && before_jump) before_jump(key == VK_END, is_pressed(VK_SHIFT));
    return;
  }
  if (before_key) before_key(moves_down(key), caret_first());
}

/// Moves the caret out of a pair: the system's text boxes let it in, and wrap lines there.
void ViewerBox::take_whole_pairs(bool down) {
  if (!has_pairs_) return;
  const std::wstring text = units();
  const TextSelection selected = selection();
  auto start = static_cast<std::size_t>(selected.start);
  auto end = static_cast<std::size_t>(selected.start + selected.length);
  if (!is_second_of_pair(text, start) && !is_second_of_pair(text, end)) return;
  const bool backwards = caret_first();
  if (start == end) {
    start = end = down ? end + 1 : start - 1;
  } else {
    if (is_second_of_pair(text, start)) backwards&& down ? ++start : --start;
    if (is_second_of_pair(text, end)) backwards || down ? ++end : --end;
  }
  const int length = static_cast<int>(end - start);
  if (backwards) {
    select(static_cast<int>(end), -length);
  } else {
    select(static_cast<int>(start), length);
  }
}

void ViewerBox::turn_wheel(WPARAM wparam) {
  const int delta = GET_WHEEL_DELTA_WPARAM(wparam);
  if ((GET_KEYSTATE_WPARAM(wparam) & MK_CONTROL) != 0) {
    const int steps = zooms_.add(delta, 1);
    for (int i = 0; i < std::abs(steps) && wheel_zoomed; ++i) wheel_zoomed(steps > 0);
    return;
  }
  const int steps = lines_.add(delta, wheel_lines(visible_lines()));
  if (steps != 0 && wheel) wheel(-steps);
}

}  // namespace tallowmere
