#include "tests/windows/find_row.h"
#include "tests/windows/form1_fixture.h"

namespace tallowmere {
namespace {

class Form1ListTest : public Form1Test {
 protected:
  void add_three() {
    files.add("C:\\docs\\b.txt", "x needle", 30 * minute);
    files.add("C:\\docs\\C.txt", "needle", 10 * minute);
    files.add("C:\\docs\\a.log", "xxxx needle", 20 * minute);
  }

  void open_with_list() {
    add_three();
    open();
    run(SearchKind::new_search, "needle");
    ASSERT_EQ(names(), "a.log b.txt C.txt ");
  }

  /// '^' ascending, 'v' descending, blank none, for each header.
  std::string arrows() const {
    std::string text;
    for (int i = 0; i < result_columns; ++i) {
      HDITEMW entry{};
      entry.mask = HDI_FORMAT;
      SendMessageW(form->ListView2.header(), HDM_GETITEMW, static_cast<WPARAM>(i),
                   reinterpret_cast<LPARAM>(&entry));
      text += entry.fmt & HDF_SORTUP ? '^' : entry.fmt & HDF_SORTDOWN ? 'v' : ' ';
    }
    return text;
  }
};

TEST_F(Form1ListTest, HeadersAndMenuSortReverseAndKeepTheSelection) {
  open_with_list();
  form->ListView2.select_only(0);
  click_column(2);
  EXPECT_EQ(names(), "a.log b.txt C.txt ");
  EXPECT_EQ(arrows(), "  v ");
  click_column(2);
  EXPECT_EQ(names(), "C.txt b.txt a.log ");
  EXPECT_EQ(arrows(), "  ^ ");
  EXPECT_EQ(form->ListView2.selected(), 2);
  choose(ID_MNUSORT + 1);
  EXPECT_EQ(names(), "b.txt a.log C.txt ");
  EXPECT_TRUE(entry_checked(ID_MNUSORT + 1));
  EXPECT_FALSE(entry_checked(ID_MNUSORT + 2));
  EXPECT_EQ(form->ListView2.selected(), 1);
  EXPECT_EQ(form->ListView2.selected_count(), 1);
  choose(ID_MNUSORT + 1);
  run(SearchKind::new_search, "needle");
  EXPECT_EQ(names(), "C.txt a.log b.txt ") << "a new search keeps the reversed order";
  choose(ID_MNUSORT + 4);
  EXPECT_EQ(arrows(), "    ");
  choose(ID_MNUSELECTALL);
  EXPECT_EQ(form->ListView2.selected_count(), 3);
}

TEST_F(Form1ListTest, TheKeyboardGoesFromTheButtonsIntoTheList) {
  add_three();
  open();
  form->show(SW_SHOW);
  const auto press = [this](WPARAM key) {
    MSG message{GetFocus(), WM_KEYDOWN, key, 1, 0, {}};
    win32::dispatch_message(message);
    win32::pump_pending();
  };
  for (const WPARAM key : {VK_UP, VK_LEFT, VK_DOWN}) press(key);
  EXPECT_TRUE(form->cmdSearch.has_focus()) << "the list is empty, and the row does not wrap";
  press(VK_RIGHT);
  EXPECT_TRUE(form->cmdExit.has_focus());
  press(VK_RIGHT);
  EXPECT_TRUE(form->cmdExit.has_focus());
  run(SearchKind::new_search, "needle");
  EXPECT_TRUE(form->ListView2.has_focus());
  EXPECT_EQ(form->ListView2.focused(), 0);
  EXPECT_EQ(form->ListView2.selected_count(), 0);
  press(VK_DOWN);
  EXPECT_EQ(form->ListView2.selected(), 0);
  EXPECT_EQ(form->results().viewed_index, 0);
  press(VK_DOWN);
  EXPECT_EQ(form->ListView2.selected(), 1);
  form->cmdSearch.focus();
  press(VK_DOWN);
  EXPECT_TRUE(form->ListView2.has_focus());
}

TEST_F(Form1ListTest, TypingAheadWithShiftSelectsOneRow) {
  open_with_list();
  form->show(SW_SHOW);
  form->ListView2.select_only(0);
  form->ListView2.focus();
  BYTE keys[256] = {};
  keys[VK_SHIFT] = 0x80;
  SetKeyboardState(keys);
  SendMessageW(form->ListView2.handle(), WM_CHAR, 'C', 1);
  EXPECT_EQ(form->ListView2.selected(), 2);
  EXPECT_EQ(form->ListView2.selected_count(), 1);
  EXPECT_LT(GetKeyState(VK_SHIFT), 0);
  keys[VK_SHIFT] = 0;
  SetKeyboardState(keys);
}

TEST_F(Form1ListTest, TypingAheadFindsNames) {
  open_with_list();
  const HWND list = form->ListView2.handle();
  EXPECT_EQ(find_row(list, LVFI_STRING | LVFI_PARTIAL | LVFI_WRAP, L"A", 1), 0);
  EXPECT_EQ(find_row(list, LVFI_STRING | lvfi_substring | LVFI_WRAP, L"A", 1), 0);
  EXPECT_EQ(find_row(list, LVFI_STRING | lvfi_substring, L"A", 1), -1);
  EXPECT_EQ(find_row(list, LVFI_STRING | LVFI_WRAP, L"A", 1), -1);
  EXPECT_EQ(find_row(list, LVFI_PARAM, L"A", 0), -1);
}

TEST(FindByName, KnowsWholeNamesEndsAndOtherScripts) {
  ResultList list;
  for (const char* name : {"Äpfel", "Birnen", "birne"}) list.add_file_row("C:\\", name, {});
  EXPECT_EQ(find_by_name(list, {"birne", true, 0, false}), 2);
  EXPECT_EQ(find_by_name(list, {"birne", false, 0, false}), 1);
  EXPECT_EQ(find_by_name(list, {"äp", false, 1, true}), 0);
  EXPECT_EQ(find_by_name(list, {"x", false, 99, true}), -1);
}

TEST_F(Form1ListTest, LongNamesAndAnyScriptReachTheCells) {
  const std::string long_name = std::string(250, 'n') + ".txt";
  files.add("C:\\docs\\" + long_name, "needle");
  files.add("C:\\docs\\\xE4\xB8\xAD\xF0\x9F\x98\x80.txt", "needle");
  open();
  run(SearchKind::new_search, "needle");
  EXPECT_EQ(cell(0, 0), long_name);
  EXPECT_EQ(cell(1, 0), "\xE4\xB8\xAD\xF0\x9F\x98\x80.txt");
}

TEST_F(Form1ListTest, AHundredThousandRows) {
  add_many(100'000);
  open();
  form->show(SW_SHOWNOACTIVATE);
  run(SearchKind::new_search, "needle");
  choose(ID_MNUSORT + 1);
  EXPECT_EQ(form->ListView2.row_count(), 100'000);
  EXPECT_EQ(cell(0, 0), "99999");
}

}  // namespace
}  // namespace tallowmere
