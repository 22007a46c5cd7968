#include "tests/windows/form1_fixture.h"

namespace tallowmere {
namespace {

class Form1ListTest : public Form1Test {
 protected:
  void open_with_list() {
    files.add("C:\\docs\\b.txt", "x needle", 30 * minute);
    files.add("C:\\docs\\C.txt", "needle", 10 * minute);
    files.add("C:\\docs\\a.log", "xxxx needle", 20 * minute);
    open();
    run(SearchKind::new_search, "needle");
    ASSERT_EQ(names(), "a.log b.txt C.txt ");
  }

  void click_column(int column) {
    NMLISTVIEW click{};
    click.hdr = {form->ListView2.handle(), IDC_LISTVIEW2, static_cast<UINT>(LVN_COLUMNCLICK)};
    click.iSubItem = column;
    SendMessageW(form->handle(), WM_NOTIFY, IDC_LISTVIEW2, reinterpret_cast<LPARAM>(&click));
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

TEST_F(Form1ListTest, AHeaderSortsAndASecondClickReverses) {
  open_with_list();
  click_column(2);
  EXPECT_EQ(names(), "a.log b.txt C.txt ");
  EXPECT_EQ(arrows(), "  v ");
  click_column(2);
  EXPECT_EQ(names(), "C.txt b.txt a.log ");
  EXPECT_EQ(arrows(), "  ^ ");
  click_column(1);
  EXPECT_EQ(names(), "b.txt a.log C.txt ");
  EXPECT_TRUE(entry_checked(ID_MNUSORT + 1));
  EXPECT_FALSE(entry_checked(ID_MNUSORT + 2));
}

TEST_F(Form1ListTest, RightAfterASearchTheCheckedKeySortsAfresh) {
  open_with_list();
  choose(ID_MNUSORT);
  EXPECT_EQ(names(), "a.log b.txt C.txt ");
  choose(ID_MNUSORT);
  EXPECT_EQ(names(), "C.txt b.txt a.log ");
  run(SearchKind::new_search, "needle");
  EXPECT_EQ(names(), "C.txt b.txt a.log ") << "a new search keeps the reversed order";
  choose(ID_MNUSORT + 4);
  EXPECT_EQ(names(), "a.log b.txt C.txt ");
  EXPECT_EQ(arrows(), "    ");
}

TEST_F(Form1ListTest, TheSelectedFileStaysSelected) {
  open_with_list();
  form->ListView2.select_only(0);
  choose(ID_MNUSORT + 1);
  EXPECT_EQ(form->ListView2.selected(), 1);
  EXPECT_EQ(form->ListView2.selected_count(), 1);
  EXPECT_EQ(cell(1, 0), "a.log");
}

TEST_F(Form1ListTest, TypingAheadFindsNames) {
  open_with_list();
  const auto find = [&](const wchar_t* text, int start) {
    LVFINDINFOW info{};
    info.flags = LVFI_STRING | LVFI_PARTIAL | LVFI_WRAP;
    info.psz = text;
    return SendMessageW(form->ListView2.handle(), LVM_FINDITEMW, static_cast<WPARAM>(start),
                        reinterpret_cast<LPARAM>(&info));
  };
  EXPECT_EQ(find(L"c", -1), 2);
  EXPECT_EQ(find(L"B.T", -1), 1);
  EXPECT_EQ(find(L"a", 1), 0);
  EXPECT_EQ(find(L"zz", -1), -1);
}

TEST(FindByName, KnowsWholeNamesEndsAndOtherScripts) {
  ResultList list;
  for (const char* name : {"Äpfel", "Birnen", "birne"}) list.add_file_row("C:\\", name, {});
  EXPECT_EQ(find_by_name(list, "birne", true, 0, false), 2);
  EXPECT_EQ(find_by_name(list, "birne", false, 0, false), 1);
  EXPECT_EQ(find_by_name(list, "äp", false, 1, false), -1);
  EXPECT_EQ(find_by_name(list, "äp", false, 1, true), 0);
  EXPECT_EQ(find_by_name(list, "x", false, 99, true), -1);
  EXPECT_EQ(find_by_name(ResultList(), "x", false, 0, true), -1);
}

TEST_F(Form1ListTest, SelectAllSelectsEveryRow) {
  open_with_list();
  choose(ID_MNUSELECTALL);
  EXPECT_EQ(form->ListView2.selected_count(), 3);
  EXPECT_TRUE(form->ListView2.is_selected(2));
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

TEST_F(Form1ListTest, AHundredThousandRowsAreThereAtOnce) {
  for (int i = 0; i < 100'000; ++i) files.add("C:\\docs\\" + std::to_string(i), "needle", i);
  open();
  form->show(SW_SHOWNOACTIVATE);
  run(SearchKind::new_search, "needle");
  const std::uint64_t before_fill = GetTickCount64();
  form->ListView2.show_all();
  const std::uint64_t before_sort = GetTickCount64();
  choose(ID_MNUSORT + 1);
  const std::uint64_t after_sort = GetTickCount64();
  EXPECT_EQ(form->ListView2.row_count(), 100'000);
  EXPECT_EQ(cell(0, 0), "99999");
  EXPECT_LT(before_sort - before_fill, 100u);
  EXPECT_LT(after_sort - before_sort, 1500u);
}

}  // namespace
}  // namespace tallowmere
