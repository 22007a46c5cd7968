#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "app/viewer_box.h"
#include "win32/ansi_code_page.h"
#include "win32/fonts.h"
#include "win32/text.h"

namespace tallowmere {
namespace {

/// The two controls in a hidden window which writes down the pop-up menus asked for.
class ViewerBoxTest : public testing::Test {
 protected:
  ViewerBoxTest() {
    WNDCLASSW window_class{};
    window_class.lpfnWndProc = parent_proc;
    window_class.hInstance = GetModuleHandleW(nullptr);
    window_class.lpszClassName = L"ViewerBoxTest";
    RegisterClassW(&window_class);
    parent = CreateWindowExW(0, L"ViewerBoxTest", L"", WS_OVERLAPPEDWINDOW, 0, 0, 700, 500, nullptr,
                             nullptr, GetModuleHandleW(nullptr), this);
    SetWindowLongPtrW(parent, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    edit = child(L"EDIT", ES_MULTILINE | ES_AUTOVSCROLL | ES_READONLY | ES_NOHIDESEL | WS_BORDER);
    box = std::make_unique<ViewerBox>(edit, child(L"SCROLLBAR", SBS_VERT), page);
    font = win32::Font("Courier New", 10, 96);
    box->set_font(font.handle());
  }
  ~ViewerBoxTest() override {
    box.reset();
    DestroyWindow(parent);
  }

  HWND child(const wchar_t* class_name, DWORD style) const {
    return CreateWindowExW(0, class_name, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 600, 320,
                           parent, nullptr, GetModuleHandleW(nullptr), nullptr);
  }

  static LRESULT CALLBACK parent_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    auto* test = reinterpret_cast<ViewerBoxTest*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message != WM_CONTEXTMENU || test == nullptr) {
      return DefWindowProcW(window, message, wparam, lparam);
    }
    test->menus_over.push_back(reinterpret_cast<HWND>(wparam));
    return 0;
  }

  LRESULT send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
    return SendMessageW(edit, message, wparam, lparam);
  }
  void type(WPARAM key) const {
    send(WM_KEYDOWN, key);
    send(WM_KEYUP, key);
  }
  static std::string lines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += "line " + std::to_string(i) + "\r\n";
    return text;
  }

  CodePage page = CodePage::windows_1252();
  HWND parent = nullptr;
  HWND edit = nullptr;
  win32::Font font;
  std::vector<HWND> menus_over;
  std::unique_ptr<ViewerBox> box;
};

TEST_F(ViewerBoxTest, CharactersAreBytes) {
  std::string text;
  for (int byte = 1; byte < 256; ++byte) text += static_cast<char>(byte == '\n' ? 'x' : byte);
  text += "\r\n\r\n\tend \x81\x9d\xff";
  box->set_text(text);
  const auto length = static_cast<int>(text.size());
  EXPECT_EQ(GetWindowTextLengthW(edit), length);
  EXPECT_EQ(box->selection(), TextSelection{});
  const int last = box->line_from_char(length);
  EXPECT_EQ(last, box->line_count() - 1);
  EXPECT_EQ(box->line_index(last), length - 8);
  EXPECT_EQ(box->line_index(last - 1), length - 10);
  EXPECT_EQ(box->line_from_char(length - 9), last - 1);
  for (int at = 0; at + 3 <= length; at += 7) {
    box->select(at, 3);
    EXPECT_EQ(box->selection(), (TextSelection{at, 3}));
  }
  EXPECT_EQ(box->text().substr(box->text().size() - 2), "\xC3\xBF");  // ÿ
}

TEST_F(ViewerBoxTest, NothingChangesTheText) {
  box->set_text("some text to keep\r\nand more");
  box->enable(true);
  const std::string text = box->text();
  box->select(5, 4);
  for (const wchar_t typed : {L'x', L'\b', L'\r', L'\x16', L'\x18', L'\x1A', L'\t'}) {
    send(WM_CHAR, typed);
    send(WM_IME_CHAR, typed);
  }
  for (const WPARAM key : {VK_DELETE, VK_BACK, VK_INSERT, VK_RETURN}) type(key);
  for (const int message : {WM_PASTE, WM_CUT, WM_CLEAR, WM_UNDO, EM_UNDO}) {
    send(static_cast<UINT>(message));
  }
  send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"other"));
  EXPECT_EQ(box->text(), text);
  EXPECT_EQ(box->selection(), (TextSelection{5, 4}));
  EXPECT_NE(GetWindowLongPtrW(edit, GWL_STYLE) & ES_READONLY, 0);

  send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(edit), -1);
  EXPECT_EQ(menus_over, std::vector<HWND>{edit});
  EXPECT_EQ(send(WM_GETDLGCODE) & (DLGC_HASSETSEL | DLGC_WANTTAB | DLGC_WANTALLKEYS), 0);
}

TEST_F(ViewerBoxTest, VisibleLinesFollowTheFont) {
  box->set_text(lines(500));
  const int small = box->visible_lines();
  EXPECT_GT(small, 10);
  EXPECT_LT(small, 40);
  const win32::Font large("Courier New", 20, 96);
  box->set_font(large.handle());
  EXPECT_NEAR(box->visible_lines(), small / 2, 1);
  // What the box itself takes for a page, which it leaves one line of at most.
  const int top = box->first_visible_line();
  send(EM_SCROLL, SB_PAGEDOWN);
  EXPECT_NEAR(box->first_visible_line() - top, box->visible_lines(), 1);
  MoveWindow(edit, 0, 0, 600, 1, FALSE);
  EXPECT_EQ(box->visible_lines(), 1);
  box->set_font(font.handle());
}

TEST_F(ViewerBoxTest, ScrollsToAnyLineAndNoFurther) {
  const int page_lines = box->visible_lines();
  for (const std::string& text : {lines(3000), std::string("short")}) {
    box->set_text(text);
    const int last_top = std::max(box->line_count() - page_lines, 0);
    for (const int line : {last_top / 2, last_top, 0, last_top + 1, 100000, -5, last_top / 3}) {
      box->set_redraw(false);
      box->set_first_visible_line(line);
      box->set_redraw(true);
      EXPECT_EQ(box->first_visible_line(), std::clamp(line, 0, last_top));
      // As when a hit is centred: the caret moves, the view does not.
      box->select(box->line_index(box->line_count() - 1), 0);
      EXPECT_EQ(box->first_visible_line(), std::clamp(line, 0, last_top));
    }
  }
  EXPECT_NE(GetWindowLongPtrW(edit, GWL_STYLE) & WS_VISIBLE, 0);
}

// Long lines are put in piece by piece.
TEST_F(ViewerBoxTest, PiecesWrapAsTheWholeDoes) {
  std::string words;
  for (int i = 0; words.size() < 5000; ++i)
    words += std::string(i * 7 % 23, 'w') + (i % 40 ? " " : "\r\n");
  for (const std::string& text : {words, std::string(4000, 'm') + "\r\n" + words}) {
    box->set_text(text + std::string(2000, 'x'));
    std::vector<int> starts;
    for (int line = 0; line < box->line_count(); ++line) starts.push_back(box->line_index(line));
    send(WM_SIZE);
    EXPECT_EQ(box->line_count(), static_cast<int>(starts.size()));
    box->set_units(win32::wide(text + std::string(2000, 'x')));
    for (int line = 0; line < box->line_count(); ++line) {
      ASSERT_EQ(starts.at(static_cast<std::size_t>(line)), box->line_index(line)) << line;
    }
    EXPECT_EQ(starts.size(), static_cast<std::size_t>(box->line_count()));
  }
}

TEST_F(ViewerBoxTest, LongLineWraps) {
  box->set_text(std::string(31000, 'm'));
  const int columns = box->line_index(1);
  EXPECT_GT(columns, 20);
  EXPECT_EQ(box->line_count(), (31000 + columns - 1) / columns);
  EXPECT_EQ(box->line_from_char(30999), box->line_count() - 1);
  box->set_first_visible_line(200);
  EXPECT_EQ(box->first_visible_line(), 200);
}

TEST_F(ViewerBoxTest, KeysMoveTheCaretAfterTheHandlers) {
  box->set_text(lines(100));
  std::string calls;
  box->before_key = [&](bool down, bool) {
    calls += down ? "down" : "up";
    calls += std::to_string(box->selection().start) + " ";
  };
  box->selection_changed = [&] { calls += "changed "; };
  type(VK_DOWN);
  type(VK_RIGHT);
  EXPECT_EQ(calls, "down0 changed down8 changed ");
  EXPECT_EQ(box->selection(), (TextSelection{9, 0}));
  int moved = 0;
  box->view_moved = [&] { ++moved; };
  type(VK_NEXT);
  type(VK_NEXT);
  EXPECT_GT(moved, 0);
  EXPECT_GT(box->first_visible_line(), 0);
}

TEST_F(ViewerBoxTest, CaretMayStandAtTheStartOfTheSelection) {
  box->set_text(lines(100));
  const int start = box->line_index(3);
  const int end = box->line_index(6) + 2;
  box->select(start, end - start);
  EXPECT_FALSE(box->caret_first());
  box->select(end, start - end);
  EXPECT_TRUE(box->caret_first());
  EXPECT_EQ(box->selection(), (TextSelection{start, end - start}));

  // Within one line only the caret's place tells.
  ShowWindow(parent, SW_SHOWNA);
  box->focus();
  box->select(end, -2);
  EXPECT_TRUE(box->caret_first());
  box->select(end - 2, 2);
  EXPECT_FALSE(box->caret_first());
}

TEST_F(ViewerBoxTest, WheelScrollsAndZooms) {
  UINT per_notch = 0;
  SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &per_notch, 0);
  int scrolled = 0;
  int zoomed = 0;
  box->wheel = [&](int by) { scrolled += by; };
  box->wheel_zoomed = [&](bool larger) { zoomed += larger ? 1 : -1; };
  const auto turn = [&](int delta, WORD keys) { send(WM_MOUSEWHEEL, MAKEWPARAM(keys, delta)); };
  for (int i = 0; i < 4; ++i) turn(-WHEEL_DELTA / 4, 0);
  EXPECT_EQ(scrolled, static_cast<int>(per_notch));
  turn(WHEEL_DELTA, 0);
  EXPECT_EQ(scrolled, 0);
  turn(WHEEL_DELTA, MK_CONTROL);
  EXPECT_EQ(zoomed, 1);
  turn(-2 * WHEEL_DELTA, MK_CONTROL);
  EXPECT_EQ(zoomed, -1);
  EXPECT_EQ(scrolled, 0);
}

TEST_F(ViewerBoxTest, ThumbReachesBothEnds) {
  for (const int value : {0, 1, 70000, scroll_maximum}) {
    box->set_scroll_value(value);
    EXPECT_EQ(box->VScroll1.position(), value);
  }
  box->enable(false);
  EXPECT_FALSE(box->enabled() || box->VScroll1.enabled());
}

}  // namespace
}  // namespace tallowmere
