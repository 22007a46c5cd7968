#include "tests/windows/form1_fixture.h"

namespace tallowmere {
namespace {

class Form1SearchTest : public Form1Test {
 protected:
  void open_with_files() {
    files.add("C:\\docs\\b.txt", "a needle", 10 * minute);
    files.add("C:\\docs\\a.txt", "another needle here", 20 * minute);
    files.add("C:\\docs\\sub\\c.txt", "hay only", 30 * minute);
    open();
  }
};

TEST_F(Form1SearchTest, AFileSearchKeepsItsFileAndLetsTheCheckedKeySortAfresh) {
  open_with_files();
  run(SearchKind::new_search, "needle");
  choose(ID_MNUSORT);
  form->ListView2.select_only(1);
  run(SearchKind::file_search, "a needle");
  EXPECT_EQ(form->ListView2.selected(), 1);
  form->ListView2.select_only(-1);
  run(SearchKind::file_search, "hay");
  EXPECT_EQ(form->Label1.text(), "Selected File Matched") << "nothing was searched";
  choose(ID_MNUSORT);
  EXPECT_EQ(names(), "a.txt b.txt ");
}

TEST_F(Form1SearchTest, WhileItRunsOnlyStopCanBeUsed) {
  open_with_files();
  files.add("C:\\docs\\locked.txt", "needle").unreadable = true;
  std::atomic<bool> checked = false;
  files.on_read = [&] {
    if (checked.exchange(true)) return;
    EXPECT_EQ(form->cmdSearch.text(), "Stop");
    EXPECT_EQ(form->Label1.text(), "Searching");
    EXPECT_TRUE(entry_enabled(ID_MNUSTOP));
    for (const int id : {ID_MNUSTART, ID_MNUMINIMIZEON, ID_MNUUNICODE, ID_MNUEXIT}) {
      EXPECT_FALSE(entry_enabled(id));
      choose(id);  // nothing happens
    }
    click_column(2);
    clock.time_of_day += 0.5;
  };
  run(SearchKind::new_search, "needle");
  EXPECT_TRUE(checked);
  EXPECT_EQ(form->sort_type(), SortKey::name);
  EXPECT_EQ(form->Label1.text(), "2 file(s) matched out of 4");
  EXPECT_EQ(form->Label2.text(), "in 0.50 seconds");
  EXPECT_NE(form->tool_tip(form->Label1).find("C:\\docs\\locked.txt"), std::string::npos);
  run(SearchKind::list_search, "needle");
  EXPECT_EQ(form->tool_tip(form->Label1), "needle, then needle");
}

TEST_F(Form1SearchTest, ClosingTheWindowStopsTheRunFirst) {
  for (int i = 0; i < 100; ++i) files.add("C:\\docs\\" + std::to_string(i), "needle");
  open();
  std::atomic<bool> posted = false;
  files.on_read = [&] {
    if (!posted.exchange(true)) PostMessageW(form->handle(), WM_CLOSE, 0, 0);
    Sleep(15);
  };
  run(SearchKind::new_search, "needle");
  EXPECT_LT(form->results().file_count(), 100u);
  EXPECT_FALSE(win32::pump_pending()) << "the program's end was not asked for";
  EXPECT_EQ(form->handle(), nullptr);
  EXPECT_EQ(settings.get_setting("criteria"), "needle");
  EXPECT_NE(settings.get_setting("recent_searches").find(";criteria=needle;"), std::string::npos);
}

TEST_F(Form1SearchTest, AReadErrorIsToldAndMayStopTheRun) {
  for (const char name : {'a', 'b', 'c', 'd'}) {
    auto& file = files.add(std::string("C:\\docs\\") + name, "a needle");
    if (name == 'a' || name == 'c') file.breaks_at = 3;
  }
  open();
  std::string prompt;
  {
    const User goes_on("Cannot Read C:\\docs\\a", press_button(IDOK, &prompt));
    const User stops("Cannot Read C:\\docs\\c", press_button(IDCANCEL));
    run(SearchKind::new_search, "needle");
  }
  EXPECT_TRUE(prompt.ends_with(" - encountered while trying to GET DATA. ")) << prompt;
  EXPECT_EQ(names(), "b ");
  EXPECT_EQ(form->Label1.text(), "1 file(s) matched out of 3");
  EXPECT_EQ(form->Label2.text(), "Search Stopped");

  // A search of one file has nothing to stop; the viewer cannot read it either.
  files.add("C:\\docs\\b", "a needle").breaks_at = 3;
  form->ListView2.select_only(0);
  const User searches("Cannot Read C:\\docs\\b", [](HWND box) {
    EXPECT_FALSE(IsWindowVisible(GetDlgItem(box, IDCANCEL)));
    press_button(IDOK)(box);
  });
  const User views("Cannot Get Data", press_button(IDOK));
  run(SearchKind::file_search, "needle");
}

TEST_F(Form1SearchTest, WithoutMemoryItKeepsWhatItHasFoundAndGoesOn) {
  open_with_files();
  std::atomic<int> reads = 0;
  files.on_read = [&] {
    if (++reads == 2) throw std::bad_alloc();
  };
  {
    const User user("Search Stopped", press_button(IDOK));
    run(SearchKind::new_search, "needle");
  }
  EXPECT_TRUE(std::string("a.txt b.txt ").starts_with(names())) << names();
  EXPECT_EQ(form->Label2.text(), "Search Stopped");
  run(SearchKind::new_search, "needle");
  EXPECT_EQ(names(), "a.txt b.txt ");
  // In any other handler: reported, and the viewer can be used again.
  files.on_read = [] { throw std::bad_alloc(); };
  {
    const User user("Cannot Continue", press_button(IDOK));
    click_row(0);
  }
  files.on_read = {};
  EXPECT_FALSE(form->finding());
  choose(ID_MNUFINDNEXT);
  EXPECT_EQ(form->Text1.selection().length, 6);
}

}  // namespace
}  // namespace tallowmere
