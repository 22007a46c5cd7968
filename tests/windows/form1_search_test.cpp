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

TEST_F(Form1SearchTest, AFileSearchNeedsASelectedFileAndKeepsIt) {
  add_three_files();
  open();
  run(SearchKind::new_search, "needle");
  form->ListView2.select_only(1);
  run(SearchKind::file_search, "a needle");
  EXPECT_EQ(form->ListView2.selected(), 1);
  form->ListView2.select_only(-1);
  run(SearchKind::file_search, "another");
  EXPECT_EQ(form->Label1.text(), "Selected File Matched") << "nothing was searched";
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
    click_column(2);
  };
  run(SearchKind::new_search, "needle");
  EXPECT_TRUE(checked);
  EXPECT_EQ(form->sort_type(), SortKey::name);
  EXPECT_EQ(form->Label1.text(), "2 file(s) matched out of 3");
}

TEST_F(Form1SearchTest, ClosingTheWindowStopsTheRunFirst) {
  add_many(100);
  open();
  bool posted = false;
  files.on_read = [&] {
    if (!std::exchange(posted, true)) PostMessageW(form->handle(), WM_CLOSE, 0, 0);
    Sleep(15);
  };
  run(SearchKind::new_search, "needle");
  EXPECT_LT(form->results().file_count(), 100u);
  EXPECT_FALSE(win32::pump_pending()) << "the program's end was not asked for";
  EXPECT_EQ(form->handle(), nullptr);
  EXPECT_EQ(settings.get_setting("criteria"), "needle");
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

TEST_F(Form1SearchTest, AReadErrorIsToldAndMayStopTheRun) {
  for (const char* name : {"a", "b", "c", "d"}) {
    files.add(std::string("C:\\docs\\") + name, "a needle").breaks_at =
        *name % 2 == 0 ? SIZE_MAX : 3;
  }
  open();
  std::string prompt;
  {
    const User goes_on("Cannot Read C:\\docs\\a", [&](HWND box) {
      prompt = message_box_text(box);
      PostMessageW(box, WM_COMMAND, IDOK, 0);
    });
    const User stops("Cannot Read C:\\docs\\c",
                     [](HWND box) { PostMessageW(box, WM_COMMAND, IDCANCEL, 0); });
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
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  const User views("Cannot Get Data", [](HWND box) { PostMessageW(box, WM_COMMAND, IDOK, 0); });
  run(SearchKind::file_search, "needle");
}

TEST_F(Form1SearchTest, WithoutMemoryItKeepsWhatItHasFoundAndGoesOn) {
  add_three_files();
  open();
  int reads = 0;
  files.on_read = [&] {
    if (++reads == 2) throw std::bad_alloc();
  };
  {
    const User user("Search Stopped", [](HWND box) { PostMessageW(box, WM_COMMAND, IDOK, 0); });
    run(SearchKind::new_search, "needle");
  }
  EXPECT_EQ(form->results().file_count(), 1u);
  EXPECT_EQ(form->Label2.text(), "Search Stopped");
  run(SearchKind::new_search, "needle");
  EXPECT_EQ(names(), "a.txt b.txt ");
  // In any other handler: told, and the viewer can be used again.
  files.on_read = [] { throw std::bad_alloc(); };
  {
    const User user("Cannot Go On", [](HWND box) { PostMessageW(box, WM_COMMAND, IDOK, 0); });
    form->ListView2.select_only(0);
    win32::pump_pending();
  }
  files.on_read = {};
  EXPECT_FALSE(form->finding());
  choose(ID_MNUFINDNEXT);
  EXPECT_EQ(form->Text1.selection().length, 6);
}

TEST_F(Form1SearchTest, AFileSearchLetsTheCheckedKeySortAfresh) {
  add_three_files();
  open();
  run(SearchKind::new_search, "needle");
  choose(ID_MNUSORT);
  form->ListView2.select_only(0);
  run(SearchKind::file_search, "another");
  choose(ID_MNUSORT);
  EXPECT_EQ(names(), "a.txt b.txt ");
  choose(ID_MNUSORT);
  EXPECT_EQ(names(), "b.txt a.txt ");
}

TEST_F(Form1SearchTest, ButtonAndMenuAskFirst) {
  add_three_files();
  open();
  run(SearchKind::new_search, "needle");
  {
    const User narrow("Narrow Search?", [](HWND prompt) {
      EXPECT_FALSE(IsWindowEnabled(GetDlgItem(prompt, IDC_NARROW_OPTION + 2)));
      PostMessageW(prompt, WM_COMMAND, IDCANCEL, 0);
    });
    form->cmdSearch.click();
  }
  {
    const User criteria("Search Criteria - File Search",
                        [](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
    form->ListView2.select_only(0);
    choose(ID_MNUSEARCHFILE);
  }
  EXPECT_EQ(form->Label1.text(), "2 file(s) matched out of 3");
}

TEST(WindowSearchHost, LooksForEventsFarLessOftenThanItIsAsked) {
  bool stop = false;
  ResultList results;
  WindowSearchHost host(nullptr, results, stop, true);
  const std::uint64_t start = GetTickCount64();
  int posted = 0;
  for (int i = 0; i < 10'000; ++i) {
    MSG message;
    if (!PeekMessageW(&message, nullptr, WM_NULL, WM_NULL, PM_NOREMOVE)) {
      PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
      ++posted;
    }
    ASSERT_TRUE(host.go_on());
  }
  EXPECT_LE(static_cast<std::uint64_t>(posted), (GetTickCount64() - start) / 10 + 2);
  stop = true;
  EXPECT_FALSE(host.go_on());
}

}  // namespace
}  // namespace tallowmere
