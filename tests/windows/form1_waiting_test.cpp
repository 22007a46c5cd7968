#include "tests/support/hanging_files.h"
#include "tests/windows/form1_fixture.h"

namespace tallowmere {
namespace {

using Call = HangingFiles::Call;

/// The main window over a disk that hangs on command, with two files listed.
class Form1WaitingTest : public Form1Test {
 protected:
  Form1WaitingTest() {
    disk.add("C:\\docs\\a.txt", "a needle" + std::string(8 << 20, '.'));
    disk.add("C:\\docs\\b.txt", "b needle");
    settings.save_setting("path", "C:\\docs\\");
    settings.save_setting("checked", "YNNNNNNYNNYNNNNNYYN");  // all files, by name, no sound
    form = std::make_unique<Form1>(
        Form1::Services{search, settings, disk, clock, page, "C:\\program\\"});
    run(SearchKind::new_search, "needle");
  }
  ~Form1WaitingTest() override { form.reset(); }

  /// Runs `work`, whose next such call hangs, and meanwhile `act` from another thread.
  void hang(Call call, const std::function<void()>& work, const std::function<void()>& act) {
    disk.hang_next(call);
    std::atomic<bool> acted = false;
    const std::jthread user([&] {
      disk.wait_for_hang();
      act();
      acted = true;
    });
    work();
    while (!acted) win32::pump_pending();  // what it sends is not all served in the step
    win32::pump_pending();
    EXPECT_EQ(disk.hanging(), 1);
    EXPECT_FALSE(form->finding());
    disk.release();
  }
  void press_escape() { PostMessageW(form->ListView2.handle(), WM_KEYDOWN, VK_ESCAPE, 0); }
  void find_next() { choose(ID_MNUFINDNEXT); }

  HangingFiles disk;
};

TEST_F(Form1WaitingTest, EscapeOrAnotherRowEndsWhatHangs) {
  for (const Call call : {Call::facts, Call::open, Call::read}) {
    hang(
        call, [&] { click_row(0); }, [&] { press_escape(); });
    EXPECT_EQ(text_and_caption(), ", Tallowmere 32");
    EXPECT_EQ(form->results().viewed_index, -2);
    hang(
        call, [&] { choose(ID_MNUVIEW); }, [&] { form->ListView2.select_only(1); });
    EXPECT_EQ(text_and_caption(), "b needle, b.txt - Tallowmere 32");
  }
  click_row(0);
  const std::string shown = text_and_caption();
  for (const Call call : {Call::facts, Call::open, Call::read}) {
    hang(
        call, [&] { find_next(); }, [&] { press_escape(); });
    EXPECT_EQ(text_and_caption(), shown);
  }
  // A search of one file opens it first.
  form->ListView2.select_only(1);
  hang(
      Call::open, [&] { run(SearchKind::file_search, "b"); }, [&] { choose(IDC_CMDSEARCH); });
  EXPECT_EQ(form->Label2.text(), "Search Stopped");
  EXPECT_EQ(text_and_caption(), ", Tallowmere 32");
}

TEST_F(Form1WaitingTest, NothingElseBeginsWhileItHangs) {
  click_row(1);
  hang(
      Call::open, [&] { click_row(0); },
      [&] {
        notify_list(static_cast<UINT>(NM_DBLCLK));
        for (const int command : {ID_MNUREMOVE, ID_MNUSEARCHNEW, ID_MNUSORT + 2, ID_MNUEXIT}) {
          choose(command);
        }
        SendMessageW(form->handle(), WM_VSCROLL, SB_BOTTOM,
                     reinterpret_cast<LPARAM>(form->Text1.VScroll1.handle()));
        SetWindowPos(form->handle(), nullptr, 0, 0, 700, 700, SWP_NOMOVE | SWP_NOZORDER);
        EXPECT_TRUE(form->finding());
        EXPECT_EQ(names(), "a.txt b.txt ");
        form->ListView2.select_only(1);
        form->ListView2.select_only(0);
        form->ListView2.select_only(1);
      });
  EXPECT_EQ(text_and_caption(), "b needle, b.txt - Tallowmere 32") << "the row chosen last";
}

TEST_F(Form1WaitingTest, AStoppedSearchLeavesItsHangBehindAndTheNextOneStarts) {
  for (const Call call : {Call::list, Call::open, Call::read}) {
    hang(
        call,
        [&] {
          run(SearchKind::new_search, "needle");
          EXPECT_EQ(form->Label2.text(), "Search Stopped");
          run(SearchKind::new_search, "needle");
          EXPECT_EQ(form->Label1.text(), "2 file(s) matched out of 2");
        },
        [&] { choose(IDC_CMDSEARCH); });
  }
}

TEST_F(Form1WaitingTest, TheWindowClosesWhileASearchHangs) {
  hang(
      Call::list, [&] { run(SearchKind::new_search, "needle"); },
      [&] { PostMessageW(form->handle(), WM_CLOSE, 0, 0); });
  EXPECT_EQ(form->handle(), nullptr);
}

TEST_F(Form1WaitingTest, TheWindowClosesWhileItHangs) {
  hang(
      Call::open, [&] { click_row(0); }, [&] { PostMessageW(form->handle(), WM_CLOSE, 0, 0); });
  EXPECT_FALSE(win32::pump_pending()) << "the program's end was not asked for";
  EXPECT_EQ(form->handle(), nullptr);
  EXPECT_EQ(settings.get_setting("criteria"), "needle");
}

}  // namespace
}  // namespace tallowmere
