#include "tests/windows/form1_fixture.h"

namespace tallowmere {
namespace {

class Form1ViewerTest : public Form1Test {
 protected:
  static std::string numbered(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += "line " + std::to_string(i) + "\r\n";
    return text;
  }

  /// Lists the files in which `criteria` stands.
  void list(const std::string& criteria) {
    open();
    run(SearchKind::new_search, criteria);
  }

  /// Selects as the user does, and lets the viewer follow.
  void click_row(int row) {
    form->ListView2.select_only(row);
    win32::pump_pending();
  }

  void select_text(const std::string& wanted) {
    const auto start = static_cast<int>(form->Text1.text().find(wanted));
    form->Text1.select(start, static_cast<int>(wanted.size()));
    SendMessageW(form->Text1.handle(), WM_KEYUP, VK_RIGHT, 0);
  }

  std::string selected() const {
    const TextSelection selection = form->Text1.selection();
    return form->Text1.text().substr(static_cast<std::size_t>(selection.start),
                                     static_cast<std::size_t>(selection.length));
  }

  std::string caption() const { return win32::Control(form->handle()).text(); }

  /// "hyper caption/enabled restore enabled", of the buttons; the menus must say the same.
  std::string hyper_buttons() const {
    EXPECT_EQ(entry_enabled(ID_MNUHYPER), form->cmdHyper.enabled());
    EXPECT_EQ(entry_enabled(ID_MNURESTORE), form->cmdRestore.enabled());
    return form->cmdHyper.text() + (form->cmdHyper.enabled() ? "+" : "-") +
           (form->cmdRestore.enabled() ? " restore" : "");
  }
};

TEST_F(Form1ViewerTest, ASelectedRowShowsItsFirstHitInTheMiddle) {
  files.add("C:\\docs\\a.txt", numbered(200) + "a needle\r\n" + numbered(200));
  files.add("C:\\docs\\b.txt", "needle b");
  list("needle");
  EXPECT_FALSE(form->Text1.enabled());
  click_row(0);
  EXPECT_EQ(selected(), "needle");
  EXPECT_EQ(caption(), " a.txt - Tallowmere 32");
  EXPECT_EQ(form->lblFileInfo.text().substr(0, 13), "3,790 bytes  ");
  const int top = form->Text1.first_visible_line();
  const int half = form->Text1.visible_lines() / 2;
  EXPECT_EQ(form->Text1.line_from_char(form->Text1.selection().start), top + half);
  EXPECT_FALSE(form->cmdView.enabled()) << "it is on view";
  EXPECT_TRUE(form->cmdFindNext.enabled());
  click_row(1);
  EXPECT_EQ(form->Text1.text(), "needle b");
  EXPECT_EQ(form->results().viewed_index, 1);
  run(SearchKind::new_search, "nothing of the kind");
  EXPECT_EQ(form->Text1.text() + form->lblFileInfo.text(), "");
  EXPECT_EQ(caption(), " Tallowmere 32");
  EXPECT_FALSE(form->Text1.enabled() || form->cmdFindNext.enabled());
}

TEST_F(Form1ViewerTest, ASortKeepsTheFileOnView) {
  files.add("C:\\docs\\a.txt", "a needle");
  files.add("C:\\docs\\b.txt", "b is a longer needle, and a needle");
  list("needle");
  click_row(0);
  click_column(2);
  win32::pump_pending();
  EXPECT_EQ(names(), "b.txt a.txt ");
  EXPECT_EQ(form->ListView2.selected(), 1);
  EXPECT_EQ(form->results().viewed_index, 1);
  EXPECT_EQ(form->Text1.text(), "a needle");
  EXPECT_FALSE(form->cmdView.enabled());
}

TEST_F(Form1ViewerTest, DoubleClicksStepThroughTheHits) {
  files.add("C:\\docs\\a.txt", "needle one, needle two");
  list("needle");
  click_row(0);
  NMITEMACTIVATE click{};
  click.hdr = {form->ListView2.handle(), IDC_LISTVIEW2, static_cast<UINT>(NM_DBLCLK)};
  for (const int start : {12, 0}) {
    SendMessageW(form->handle(), WM_NOTIFY, IDC_LISTVIEW2, reinterpret_cast<LPARAM>(&click));
    EXPECT_EQ(form->Text1.selection(), (TextSelection{start, 6}));
  }
}

TEST_F(Form1ViewerTest, HyperFindInItsThreeStates) {
  files.add("C:\\docs\\a.txt", "cat dog bird dog cat bird");
  list("cat");
  click_row(0);
  EXPECT_EQ(hyper_buttons(), "HyperFind-");
  select_text("cat");
  EXPECT_EQ(hyper_buttons(), "HyperFind-") << "this only repeats the criteria";
  select_text("dog");
  EXPECT_EQ(hyper_buttons(), "HyperFind+");
  form->cmdHyper_Click();
  EXPECT_EQ(hyper_buttons(), "HyperFind- restore");
  EXPECT_EQ(form->Text1.selection(), (TextSelection{4, 3}));
  EXPECT_EQ(form->Label1.text(), "Selected File Matched");
  EXPECT_EQ(search.criteria, "dog");
  EXPECT_EQ(form->tool_tip(form->cmdHyper), "Find Selected Text");

  select_text("bird");
  EXPECT_EQ(hyper_buttons(), "HyperFind+ restore");
  form->cmdHyper_Click();
  form->cmdRestore_Click();
  EXPECT_EQ(search.criteria, "cat") << "the user's own, after two HyperFinds";
  EXPECT_EQ(selected(), "cat");
  EXPECT_EQ(hyper_buttons(), "Restore Hyper+");
  EXPECT_EQ(form->tool_tip(form->cmdHyper), "Redo Last HyperFind");
  select_text("dog");
  EXPECT_EQ(hyper_buttons(), "HyperFind+");
  form->Text1.select(0, 0);
  SendMessageW(form->Text1.handle(), WM_KEYUP, VK_LEFT, 0);
  form->cmdHyper_Click();
  EXPECT_EQ(search.criteria, "bird");
  EXPECT_EQ(hyper_buttons(), "HyperFind- restore");
  EXPECT_EQ(names(), "a.txt ");
}

TEST_F(Form1ViewerTest, AFileThatCannotBeViewedSaysSoAndLeavesTheViewerEmpty) {
  files.add("C:\\docs\\a.txt", "a needle");
  auto& locked = files.add("C:\\docs\\b.txt", "b needle");
  list("needle");
  click_row(0);
  locked.unreadable = true;
  {
    const User user("Cannot Open File", [](HWND box) {
      EXPECT_EQ(message_box_text(box),
                "Access is denied - encountered while trying to OPEN C:\\docs\\b.txt.");
      PostMessageW(box, WM_COMMAND, IDOK, 0);
    });
    click_row(1);
  }
  EXPECT_EQ(form->Text1.text(), "");
  EXPECT_EQ(caption(), " Tallowmere 32");
  EXPECT_TRUE(form->cmdView.enabled()) << "for another try";
  locked.unreadable = false;
  form->cmdView_Click();
  EXPECT_EQ(selected(), "needle");
}

TEST_F(Form1ViewerTest, ALongSearchForAHitCanBeStopped) {
  std::string hay(8 << 20, '.');
  files.add("C:\\docs\\a.txt", "a needle" + hay);
  list("needle");
  click_row(0);
  const TextSelection before = form->Text1.selection();
  int reads = 0;
  files.on_read = [&] {
    if (++reads != 4) return;
    EXPECT_TRUE(form->finding());
    form->mnuStop_Click();
  };
  form->cmdFindNext_Click();
  EXPECT_LT(reads, 8);
  EXPECT_FALSE(form->finding());
  EXPECT_EQ(form->Text1.selection(), before);
  files.on_read = nullptr;
  form->cmdFindNext_Click();
  EXPECT_EQ(form->Text1.selection(), before) << "once round";
}

TEST_F(Form1ViewerTest, FontCommandsStayInTheirRangeAndAreKept) {
  open();
  for (int i = 0; i < 30; ++i) choose(ID_MNULARGERFONT);
  const int lines_of_largest = form->Text1.visible_lines();
  for (int i = 0; i < 40; ++i) choose(ID_MNUSMALLERFONT);
  EXPECT_GT(form->Text1.visible_lines(), lines_of_largest);
  choose(ID_MNUEXIT);
  EXPECT_EQ(settings.get_setting("font_size"), "6");
}

}  // namespace
}  // namespace tallowmere
