#include "app/viewer_box.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "tests/windows/picture.h"
#include "win32/fonts.h"
#include "win32/text.h"

namespace tallowmere {
namespace {

/// The two controls in a hidden window, which notes over which of them a menu was asked for.
class ViewerBoxTest : public testing::Test {
 protected:
  ViewerBoxTest() {
    SetWindowLongPtrW(parent, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(note_menu));
    box.set_font(font.handle());
  }
  ~ViewerBoxTest() override { DestroyWindow(parent); }

  static LRESULT CALLBACK note_menu(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_CONTEXTMENU) SetPropW(window, L"menu", reinterpret_cast<HANDLE>(wparam));
    return DefWindowProcW(window, message, wparam, lparam);
  }
  static HWND window(const wchar_t* class_name, DWORD style, HWND parent) {
    return CreateWindowW(class_name, L"", style, 0, 0, 600, 320, parent, nullptr,
                         GetModuleHandleW(nullptr), nullptr);
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
  win32::Font font{"Courier New", 10, 96};
  HWND parent = window(L"STATIC", WS_OVERLAPPEDWINDOW, nullptr);
  HWND edit = window(L"EDIT",
                     WS_CHILD | WS_VISIBLE | ES_MULTILINE | ES_AUTOVSCROLL | ES_READONLY |
                         ES_NOHIDESEL | WS_BORDER,
                     parent);
  ViewerBox box{edit, window(L"SCROLLBAR", WS_CHILD | WS_VISIBLE | SBS_VERT, parent), page};
};

TEST_F(ViewerBoxTest, CharactersAreBytes) {
  std::string text;
  for (int byte = 1; byte < 256; ++byte) text += static_cast<char>(byte == '\n' ? 'x' : byte);
  text += "\r\n\r\n\tend \x81\x9d\xff";
  box.set_text(text);
  const auto length = static_cast<int>(text.size());
  EXPECT_EQ(GetWindowTextLengthW(edit), length);
  EXPECT_EQ(box.line_index(box.line_count() - 1), length - 8);
  EXPECT_TRUE(box.text().ends_with("\xC3\xBF"));  // ÿ
}

TEST_F(ViewerBoxTest, PairsAreTwoPlacesThatAreSelectedTogether) {
  std::u16string text = u"Жя 中\U0001F600\xD800.\r\n";
  for (int i = 0; i < 3000; ++i) text += u"\U0001F600";
  box.set_text(text);
  EXPECT_EQ(GetWindowTextLengthW(edit), static_cast<int>(text.size()));
  const std::string expected = "Жя 中😀\xEF\xBF\xBD.\r\n";  // half a pair is no character
  EXPECT_EQ(box.text().substr(0, expected.size() + 4), expected + "😀");
  const struct {
    TextSelection selected;
    WPARAM key;
    TextSelection expected;
  } steps[] = {{{4, 0}, VK_RIGHT, {6, 0}}, {{6, 0}, VK_LEFT, {4, 0}}, {{5, 2}, 0, {4, 3}},
               {{3, 2}, 0, {3, 3}},        {{5, 0}, 0, {6, 0}},       {{1, 3}, 0, {1, 3}}};
  for (const auto& [selected, key, expected_selection] : steps) {
    box.select(selected.start, selected.length);
    if (key != 0) {
      type(key);
    } else {
      send(WM_LBUTTONUP);
    }
    EXPECT_EQ(box.selection(), expected_selection) << selected.start << "/" << key;
  }
}

TEST_F(ViewerBoxTest, NothingChangesTheText) {
  box.set_text("some text to keep\r\nand more");
  box.enable(true);
  const std::string text = box.text();
  box.select(5, 4);
  for (const wchar_t typed : {L'x', L'\b', L'\r', L'\x16', L'\x18', L'\x1A', L'\t'}) {
    send(WM_CHAR, typed);
    send(WM_IME_CHAR, typed);
  }
  for (const WPARAM key : {VK_DELETE, VK_BACK, VK_INSERT, VK_RETURN}) type(key);
  for (const UINT message : {WM_PASTE, WM_CUT, WM_CLEAR, WM_UNDO, EM_UNDO}) send(message);
  send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"other"));
  EXPECT_EQ(box.text(), text);
  EXPECT_EQ(box.selection(), (TextSelection{5, 4}));
  // It has no menu of its own, and Tab leaves it.
  send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(edit), -1);
  EXPECT_EQ(GetPropW(parent, L"menu"), static_cast<HANDLE>(edit));
  EXPECT_EQ(send(WM_GETDLGCODE) & (DLGC_HASSETSEL | DLGC_WANTTAB | DLGC_WANTALLKEYS), 0);
}

TEST_F(ViewerBoxTest, ScrollsToAnyLineAndNoFurther) {
  box.set_text(lines(3000));
  const int small = box.visible_lines();
  const int last_top = box.line_count() - small;
  for (const int line : {last_top / 2, last_top, 0, 100000, -5, last_top / 3}) {
    box.set_first_visible_line(line);
    // As when a hit is centred: the caret moves, the view does not.
    box.select(box.line_index(box.line_count() - 1), 0);
    EXPECT_EQ(box.first_visible_line(), std::clamp(line, 0, last_top));
  }
  const win32::Font large("Courier New", 20, 96);
  box.set_font(large.handle());
  EXPECT_NEAR(box.visible_lines(), small / 2, 1);
  box.set_font(font.handle());
}

// Long lines are put in piece by piece.
TEST_F(ViewerBoxTest, PiecesWrapAsTheWholeDoes) {
  std::string words;
  for (int i = 0; words.size() < 5000; ++i)
    words += std::string(i * 7 % 23, 'w') + (i % 40 ? " " : "\r\n");
  words = std::string(4000, 'm') + "\r\n" + words + std::string(2000, 'x');
  const auto starts = [&] {
    std::vector<int> all;
    for (int line = 0; line < box.line_count(); ++line) all.push_back(box.line_index(line));
    return all;
  };
  box.set_text(words);
  const std::vector<int> by_pieces = starts();
  box.set_units(win32::wide(words));
  EXPECT_EQ(by_pieces, starts());
}

TEST_F(ViewerBoxTest, KeysMoveTheCaretAfterTheHandlers) {
  box.set_text(lines(100));
  std::string calls;
  int moved = 0;
  box.before_key = [&](bool down, bool) {
    calls += (down ? "down" : "up") + std::to_string(box.selection().start) + " ";
  };
  box.selection_changed = [&] { calls += "changed "; };
  box.view_moved = [&] { ++moved; };
  for (const WPARAM key : {VK_DOWN, VK_RIGHT, VK_UP}) type(key);
  send(WM_CHAR, 'A' - '@');  // Ctrl+A
  EXPECT_EQ(calls, "down0 changed down8 changed up9 changed changed ");
  EXPECT_EQ(box.selection(), (TextSelection{0, GetWindowTextLengthW(edit)}));
  EXPECT_EQ(box.first_visible_line(), 0);
  box.select(1, 0);
  for (int i = 0; i < 2; ++i) type(VK_NEXT);
  EXPECT_TRUE(moved > 0 && box.first_visible_line() > 0);
}

TEST_F(ViewerBoxTest, CaretMayStandAtTheStartOfTheSelection) {
  box.set_text(lines(100));
  ShowWindow(parent, SW_SHOWNA);
  box.focus();
  const int end = box.line_index(6) + 2;
  for (const int length : {2, 20}) {  // within one line only the caret's place shows it
    box.select(end - length, length);
    EXPECT_FALSE(box.caret_first());
    box.select(end, -length);
    EXPECT_TRUE(box.caret_first());
    EXPECT_EQ(box.selection(), (TextSelection{end - length, length}));
  }
}

TEST_F(ViewerBoxTest, WheelScrollsByTheUsersLinesAndZoomsWithCtrl) {
  UINT per_notch = 0;
  SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &per_notch, 0);
  int scrolled = 0, zoomed = 0;
  box.wheel = [&](int by) { scrolled += by; };
  box.wheel_zoomed = [&](bool larger) { zoomed += larger ? 1 : -1; };
  const auto turn = [&](int delta, WORD keys) { send(WM_MOUSEWHEEL, MAKEWPARAM(keys, delta)); };
  for (int i = 0; i < 4; ++i) turn(-WHEEL_DELTA / 4, 0);
  EXPECT_EQ(scrolled, static_cast<int>(per_notch));
  turn(-2 * WHEEL_DELTA, MK_CONTROL);
  turn(WHEEL_DELTA, 0);
  EXPECT_EQ(std::pair(scrolled, zoomed), std::pair(0, -2));
}

TEST_F(ViewerBoxTest, MarksStandExactlyOnTheTextAndTheSelectionOnThem) {
  ShowWindow(parent, SW_SHOWNA);
  box.set_text("\ta needle\there\r\n" + std::string(100, 'w') + "needle\r\n" + lines(100));
  box.enable(true);
  std::vector<TextSelection> marked;
  box.marks = [&](int, int) { return marked; };
  const auto picture = [&] {
    box.repaint_marks();
    return picture_of(edit);
  };
  const auto plain = picture();
  // Over a tab, over the end of a line that wraps, in a line further down.
  marked = {{3, 7}, {box.line_index(2) - 5, 9}, {box.line_index(5), 4}};
  RECT client;
  GetClientRect(edit, &client);
  const LONG cell =
      (box.character_place(1)->x - box.character_place(0)->x) / 8;  // of a tab's eight
  std::vector<bool> expected(plain.size());
  for (const auto& [start, length] : marked) {
    for (int unit = start; unit < start + length; ++unit) {
      const POINT place = *box.character_place(unit);
      const LONG right = unit == 9 ? box.character_place(10)->x : place.x + cell;
      for (LONG y = place.y; y < place.y + box.line_height(); ++y) {
        std::fill_n(expected.begin() + y * client.right + place.x, right - place.x, true);
      }
    }
  }
  const auto now = picture();
  int outside = 0, not_tinted = 0;
  for (std::size_t i = 0; i < plain.size(); ++i) {
    outside += now[i] != plain[i] && !expected[i];
    not_tinted += now[i] == plain[i] && expected[i] &&
                  plain[i] == plain[static_cast<std::size_t>(client.right) * 100];
  }
  EXPECT_EQ(std::pair(outside, not_tinted), std::pair(0, 0));
  // Whatever changes, nothing of the old picture stays.
  for (const auto& change : std::vector<std::function<void()>>{
           [&] { box.select(5, 3); }, [&] { box.select(4, 6); },
           [&] { box.set_first_visible_line(1); }, [&] { type(VK_DOWN); },
           [&] { box.select(box.line_index(5) + 1, 0); }}) {
    change();
    const auto partly = picture_of(edit);
    EXPECT_TRUE(partly == picture());
  }
}

}  // namespace
}  // namespace tallowmere
