#include "app/tick_gate.h"
#include "app/window_search_host.h"
#include "dialogs/resource.h"
#include "tests/windows/form1_fixture.h"
#include "win32/user_locale.h"

namespace tallowmere {
namespace {

class Form1SearchTest : public Form1Test {
 protected:
  void add_three_files() {
    const Ticks day = clock.start_of_day({2024, 5, 1});
    files.add("C:\\docs\\b.txt", "a needle", day + 10 * minute);
    files.add("C:\\docs\\a.txt", "another needle here", day + 20 * minute);
    files.add("C:\\docs\\sub\\c.txt", "hay only", day + 30 * minute);
  }
};

TEST_F(Form1SearchTest, ARunFillsTheListAndTheLabels) {
  add_three_files();
  open();
  run(SearchKind::new_search, "needle");
  EXPECT_EQ(names(), "a.txt b.txt ");
  EXPECT_EQ(cell(0, 2), "19");
  EXPECT_EQ(cell(0, 3), "C:\\docs\\");
  EXPECT_EQ(cell(1, 1), win32::short_date({2024, 5, 1}) + " 12:10a");
  EXPECT_EQ(form->Label1.text(), "2 file(s) matched out of 3");
  EXPECT_EQ(form->Label2.text(), "in 0.50 seconds");
  EXPECT_EQ(form->cmdSearch.text(), "Search");
  EXPECT_FALSE(form->searching());
  EXPECT_TRUE(entry_enabled(ID_MNUSELECTALL));
  EXPECT_FALSE(entry_enabled(ID_MNUSTOP));
}

TEST_F(Form1SearchTest, AListSearchKeepsOnlyWhatMatchesAgain) {
  add_three_files();
  open();
  run(SearchKind::new_search, "e");
  run(SearchKind::list_search, "another");
  EXPECT_EQ(names(), "a.txt ");
  EXPECT_EQ(form->Label1.text(), "1 file(s) matched out of 2");
}

TEST_F(Form1SearchTest, AFileSearchTestsTheSelectedFileAndKeepsTheList) {
  add_three_files();
  open();
  run(SearchKind::new_search, "needle");
  form->ListView2.select_only(1);
  run(SearchKind::file_search, "another");
  EXPECT_EQ(form->Label1.text(), "Selected File Didn't Match");
  run(SearchKind::file_search, "a needle");
  EXPECT_EQ(form->Label1.text(), "Selected File Matched");
  EXPECT_EQ(names(), "a.txt b.txt ");
  EXPECT_EQ(form->ListView2.selected(), 1);

  form->ListView2.select_only(-1);
  form->Label1.set_text("as before");
  run(SearchKind::file_search, "a needle");
  EXPECT_EQ(form->Label1.text(), "as before");
}

TEST_F(Form1SearchTest, AFolderWithoutFilesSaysSo) {
  files.add("C:\\docs\\empty\\.keep", "");
  open();
  search.path = "C:\\nothing\\";
  run(SearchKind::new_search, "needle");
  EXPECT_EQ(form->Label1.text(), "No Files Found");
}

TEST_F(Form1SearchTest, WhileItRunsOnlyStopCanBeUsed) {
  add_three_files();
  open();
  bool checked = false;
  files.on_read = [&] {
    if (std::exchange(checked, true)) return;
    EXPECT_EQ(form->cmdSearch.text(), "Stop");
    EXPECT_EQ(form->Label1.text(), "Searching");
    EXPECT_FALSE(form->cmdExit.enabled());
    EXPECT_TRUE(entry_enabled(ID_MNUSTOP));
    EXPECT_FALSE(entry_enabled(ID_MNUSTART));
    EXPECT_FALSE(entry_enabled(ID_MNUMINIMIZEON));
    choose(ID_MNUEXIT);  // disabled: nothing happens
    choose(ID_MNUSTART);
    NMLISTVIEW click{};
    click.hdr = {form->ListView2.handle(), IDC_LISTVIEW2, static_cast<UINT>(LVN_COLUMNCLICK)};
    click.iSubItem = 2;
    SendMessageW(form->handle(), WM_NOTIFY, IDC_LISTVIEW2, reinterpret_cast<LPARAM>(&click));
  };
  run(SearchKind::new_search, "needle");
  EXPECT_TRUE(checked);
  EXPECT_EQ(form->sort_type(), SortKey::name);
  EXPECT_EQ(form->Label1.text(), "2 file(s) matched out of 3");
}

class StopTest : public Form1SearchTest, public testing::WithParamInterface<int> {};

TEST_P(StopTest, EndsTheRunAndKeepsTheRowsFound) {
  for (int i = 0; i < 100; ++i) files.add("C:\\docs\\" + std::to_string(i), "needle");
  open();
  int reads = 0;
  files.on_read = [&] {
    if (++reads != 5) return;
    switch (GetParam()) {
      case 0:
        PostMessageW(form->handle(), WM_COMMAND, ID_MNUSTOP, 0);
        break;
      case 1:
        PostMessageW(form->cmdSearch.handle(), BM_CLICK, 0, 0);
        break;
      case 2:
        PostMessageW(form->cmdSearch.handle(), WM_KEYDOWN, VK_ESCAPE, 0);
        break;
    }
    Sleep(30);  // events are due again
  };
  run(SearchKind::new_search, "needle");
  EXPECT_EQ(form->Label2.text(), "Search Stopped");
  EXPECT_GE(form->ListView2.row_count(), 4);
  EXPECT_LE(form->ListView2.row_count(), 6);
  files.on_read = nullptr;
  run(SearchKind::new_search, "needle");
  EXPECT_EQ(form->ListView2.row_count(), 100);
  EXPECT_EQ(form->Label2.text(), "in 0.50 seconds");
}

INSTANTIATE_TEST_SUITE_P(MenuButtonEsc, StopTest, testing::Values(0, 1, 2));

TEST_F(Form1SearchTest, RunningCountsAreShown) {
  for (int i = 0; i < 30; ++i) files.add("C:\\docs\\" + std::to_string(i), "needle");
  open();
  std::string seen;
  int rows_seen = 0;
  files.on_read = [&] {
    Sleep(20);
    if (form->ListView2.row_count() == 0) return;
    seen = form->Label2.text();
    rows_seen = form->ListView2.row_count();
  };
  run(SearchKind::new_search, "needle");
  EXPECT_GT(rows_seen, 0);
  EXPECT_EQ(seen.substr(0, seen.find(' ')), std::to_string(rows_seen));
}

TEST_F(Form1SearchTest, ClosingTheWindowStopsTheRunFirst) {
  for (int i = 0; i < 100; ++i) files.add("C:\\docs\\" + std::to_string(i), "needle");
  open();
  bool posted = false;
  files.on_read = [&] {
    if (!std::exchange(posted, true)) PostMessageW(form->handle(), WM_CLOSE, 0, 0);
    Sleep(15);
  };
  run(SearchKind::new_search, "needle");
  EXPECT_EQ(form->handle(), nullptr);
  EXPECT_EQ(settings.get_setting("criteria"), "needle");
  EXPECT_FALSE(win32::pump_pending()) << "the program's end was not asked for";
}

TEST_F(Form1SearchTest, UnreadFilesStandInTheTipOfTheCount) {
  add_three_files();
  files.add("C:\\docs\\locked.txt", "needle").unreadable = true;
  open();
  run(SearchKind::new_search, "needle");
  EXPECT_EQ(form->Label1.text(), "2 file(s) matched out of 4");
  EXPECT_NE(form->tool_tip(form->Label1).find("C:\\docs\\locked.txt"), std::string::npos);
  run(SearchKind::list_search, "needle");
  EXPECT_EQ(form->tool_tip(form->Label1), "");
}

TEST_F(Form1SearchTest, AReadErrorIsToldAndTheRunGoesOn) {
  add_three_files();
  files.add("C:\\docs\\a.txt", "another needle here").breaks_at = 3;
  open();
  std::string prompt;
  {
    const User user("Cannot Read C:\\docs\\a.txt", [&](HWND box) {
      prompt = control_text(box, message_box_text_id);
      PostMessageW(box, WM_COMMAND, IDOK, 0);
    });
    run(SearchKind::new_search, "needle");
  }
  EXPECT_TRUE(prompt.ends_with(" - encountered while trying to GET DATA. ")) << prompt;
  EXPECT_EQ(names(), "b.txt ");
}

TEST_F(Form1SearchTest, AFolderThatCannotBeListedIsTriedAgainOrGivenUp) {
  add_three_files();
  open();
  files.folder_errors["C:\\docs\\"] = {21, "The device is not ready"};
  {
    const User user("Cannot Search Folder", [&](HWND box) {
      EXPECT_EQ(control_text(box, message_box_text_id), "The device is not ready.");
      PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
    });
    run(SearchKind::new_search, "needle");
  }
  EXPECT_EQ(form->Label2.text(), "Search Stopped");
  {
    const User user("Cannot Search Folder", [&](HWND box) {
      files.folder_errors.clear();
      PostMessageW(box, WM_COMMAND, IDRETRY, 0);
    });
    run(SearchKind::new_search, "needle");
  }
  EXPECT_EQ(names(), "a.txt b.txt ");
}

TEST_F(Form1SearchTest, TheButtonLeadsThroughTheDialogs) {
  add_three_files();
  open();
  {
    const User user("Search Criteria - New Search", [](HWND dialog) {
      SetDlgItemTextW(dialog, IDC_SEARCH_TEXT, L"needle");
      PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    form->cmdSearch.click();
  }
  EXPECT_EQ(names(), "a.txt b.txt ");
  {
    const User narrow("Narrow Search?", [](HWND prompt) {
      EXPECT_FALSE(IsWindowEnabled(GetDlgItem(prompt, IDC_NARROW_OPTION + 2)));
      PostMessageW(GetDlgItem(prompt, IDC_NARROW_OPTION + 1), BM_CLICK, 0, 0);
      PostMessageW(prompt, WM_COMMAND, IDOK, 0);
    });
    const User criteria("Search Criteria - List Search", [](HWND dialog) {
      SetDlgItemTextW(dialog, IDC_SEARCH_TEXT, L"another");
      PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    form->cmdSearch.click();
  }
  EXPECT_EQ(names(), "a.txt ");
  {
    const User narrow("Narrow Search?",
                      [](HWND prompt) { PostMessageW(prompt, WM_COMMAND, IDCANCEL, 0); });
    form->cmdSearch.click();
  }
  {
    const User criteria("Search Criteria - File Search",
                        [](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
    form->ListView2.select_only(0);
    choose(ID_MNUSEARCHFILE);
  }
  EXPECT_EQ(names(), "a.txt ");
  EXPECT_EQ(form->Label1.text(), "1 file(s) matched out of 2");
}

TEST(TickGate, OpensAtMostOnceAnInterval) {
  TickGate gate(10);
  EXPECT_TRUE(gate.due(1000));
  EXPECT_FALSE(gate.due(1009));
  EXPECT_TRUE(gate.due(1010));
  EXPECT_FALSE(gate.due(1019));
  EXPECT_TRUE(gate.due(5000));
}

TEST(WindowSearchHost, LooksForEventsFarLessOftenThanItIsAsked) {
  ResultList results;
  bool stop = false;
  WindowSearchHost host(nullptr, results, stop);
  const std::uint64_t start = GetTickCount64();
  for (int i = 0; i < 1'000'000; ++i) ASSERT_TRUE(host.go_on());
  // A look at the queue every time would take tens of seconds.
  EXPECT_LT(GetTickCount64() - start, 2000u);
  stop = true;
  EXPECT_FALSE(host.go_on());
}

}  // namespace
}  // namespace tallowmere
