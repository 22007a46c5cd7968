#include "tests/windows/form1_fixture.h"

namespace tallowmere {
namespace {

class Form1ViewerTest : public Form1Test {
 protected:
  /// Lists the files in which "needle" stands.
  void list(const std::string& first, const std::string& second = "") {
    files.add("C:\\docs\\a.txt", first);
    if (!second.empty()) files.add("C:\\docs\\b.txt", second);
    open();
    run(SearchKind::new_search, "needle");
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

  /// "text, caption" of the viewer and the window.
  std::string shows() const {
    return form->Text1.text() + "," + win32::Control(form->handle()).text();
  }

  /// "selected criteria: hyper caption, tip, +enabled" of the viewer, the search and the buttons;
  /// the menus must say the same.
  std::string hyper() const {
    EXPECT_EQ(entry_enabled(ID_MNUHYPER), form->cmdHyper.enabled());
    EXPECT_EQ(entry_enabled(ID_MNURESTORE), form->cmdRestore.enabled());
    const TextSelection selection = form->Text1.selection();
    return form->Text1.text().substr(static_cast<std::size_t>(selection.start),
                                     static_cast<std::size_t>(selection.length)) +
           " " + search.criteria + ": " + form->cmdHyper.text() + ", " +
           form->tool_tip(form->cmdHyper) + (form->cmdHyper.enabled() ? " +hyper" : "") +
           (form->cmdRestore.enabled() ? " +restore" : "");
  }
};

TEST_F(Form1ViewerTest, ASelectedRowShowsItsFirstHitInTheMiddle) {
  std::string lines;
  for (int i = 0; i < 200; ++i) lines += "line " + std::to_string(i) + "\r\n";
  list(lines + "a needle\r\n" + lines, "needle one, needle two");
  EXPECT_FALSE(form->Text1.enabled());
  click_row(0);
  EXPECT_EQ(form->Text1.selection(), (TextSelection{static_cast<int>(lines.size()) + 2, 6}));
  EXPECT_EQ(form->lblFileInfo.text().substr(0, 13), "3,790 bytes  ");
  EXPECT_EQ(200 - form->Text1.first_visible_line(), form->Text1.visible_lines() / 2);
  EXPECT_FALSE(form->cmdView.enabled()) << "it is on view";
  EXPECT_TRUE(form->cmdFindNext.enabled());
  click_row(1);
  EXPECT_EQ(shows(), "needle one, needle two, b.txt - Tallowmere 32");
  NMITEMACTIVATE click{};
  click.hdr = {form->ListView2.handle(), IDC_LISTVIEW2, static_cast<UINT>(NM_DBLCLK)};
  for (const int start : {12, 0}) {  // double clicks step through the hits
    SendMessageW(form->handle(), WM_NOTIFY, IDC_LISTVIEW2, reinterpret_cast<LPARAM>(&click));
    EXPECT_EQ(form->Text1.selection(), (TextSelection{start, 6}));
  }
  click_column(2);  // a sort keeps the file on view
  win32::pump_pending();
  click_column(2);
  win32::pump_pending();
  EXPECT_EQ(names(), "b.txt a.txt ");
  EXPECT_EQ(form->ListView2.selected(), 0);
  EXPECT_EQ(form->results().viewed_index, 0);
  run(SearchKind::new_search, "nothing of the kind");
  EXPECT_EQ(shows() + form->lblFileInfo.text(), ", Tallowmere 32");
  EXPECT_FALSE(form->Text1.enabled() || form->cmdFindNext.enabled());
}

TEST_F(Form1ViewerTest, HyperFindInItsThreeStates) {
  list("needle dog bird dog needle bird");
  click_row(0);
  EXPECT_EQ(hyper(), "needle needle: HyperFind, Find Selected Text");
  select_text("needle");
  EXPECT_EQ(hyper(), "needle needle: HyperFind, Find Selected Text") << "only repeats them";
  select_text("dog");
  EXPECT_EQ(hyper(), "dog needle: HyperFind, Find Selected Text +hyper");
  form->cmdHyper_Click();
  EXPECT_EQ(hyper(), "dog dog: HyperFind, Find Selected Text +restore");
  EXPECT_EQ(form->Text1.selection(), (TextSelection{7, 3}));
  EXPECT_EQ(form->Label1.text(), "Selected File Matched");
  select_text("bird");
  EXPECT_EQ(hyper(), "bird dog: HyperFind, Find Selected Text +hyper +restore");
  form->cmdHyper_Click();
  form->cmdRestore_Click();  // the user's own, after two HyperFinds
  EXPECT_EQ(hyper(), "needle needle: Restore Hyper, Redo Last HyperFind +hyper");
  select_text("dog");
  EXPECT_EQ(hyper(), "dog needle: HyperFind, Find Selected Text +hyper");
  select_text("");
  form->cmdHyper_Click();
  EXPECT_EQ(hyper(), "bird bird: HyperFind, Find Selected Text +restore");
  EXPECT_EQ(names(), "a.txt ");
}

TEST_F(Form1ViewerTest, AFileThatCannotBeViewedSaysSoAndLeavesTheViewerEmpty) {
  list("a needle", "b needle");
  click_row(0);
  auto& locked = files.add("C:\\docs\\b.txt", "b needle");
  locked.unreadable = true;
  {
    const User user("Cannot Open File", [](HWND box) {
      EXPECT_EQ(message_box_text(box),
                "Access is denied - encountered while trying to OPEN C:\\docs\\b.txt.");
      PostMessageW(box, WM_COMMAND, IDOK, 0);
    });
    click_row(1);
  }
  EXPECT_EQ(shows(), ", Tallowmere 32");
  EXPECT_TRUE(form->cmdView.enabled()) << "for another try";
  locked.unreadable = false;
  form->cmdView_Click();
  EXPECT_EQ(form->Text1.selection(), (TextSelection{2, 6}));
}

TEST_F(Form1ViewerTest, ALongSearchForAHitCanBeStopped) {
  list("a needle" + std::string(8 << 20, '.'));
  click_row(0);
  int reads = 0;
  files.on_read = [&] {
    if (++reads != 4) return;
    EXPECT_TRUE(form->finding());
    form->mnuStop_Click();
  };
  form->cmdFindNext_Click();
  EXPECT_LT(reads, 8);
  EXPECT_FALSE(form->finding());
  EXPECT_EQ(form->Text1.selection(), (TextSelection{2, 6}));
}

TEST_F(Form1ViewerTest, WhatCannotBeginDuringAStepDoesNotEndIt) {
  list("a needle" + std::string(8 << 20, '.'), "b needle");
  click_row(0);
  int reads = 0;
  files.on_read = [&] {
    Sleep(12);  // events are served now and then
    if (++reads != 2) return;
    form->ListView2.select_only(1);
    NMITEMACTIVATE click{};
    click.hdr = {form->ListView2.handle(), IDC_LISTVIEW2, static_cast<UINT>(NM_DBLCLK)};
    SendMessageW(form->handle(), WM_NOTIFY, IDC_LISTVIEW2, reinterpret_cast<LPARAM>(&click));
    for (const int command : {ID_MNUVIEW, ID_MNUSORT + 2, ID_MNUEXIT}) choose(command);
    form->cmdFindPrev_Click();
    EXPECT_TRUE(form->finding());
    EXPECT_EQ(names(), "a.txt b.txt ");
  };
  form->cmdFindNext_Click();
  EXPECT_LT(reads, 8) << "the new row has not ended the step";
  files.on_read = {};
  win32::pump_pending();
  EXPECT_EQ(shows(), "b needle, b.txt - Tallowmere 32");
}

TEST_F(Form1ViewerTest, ANameBeingTypedBelongsToItsFileWhereverItsRowGoes) {
  list("a needle", "b needle, longer");
  click_row(0);
  form->ListView2.edit_label();
  const HWND edit = ListView_GetEditControl(form->ListView2.handle());
  ASSERT_NE(edit, nullptr);
  form->mnuSort_Click(2);
  ASSERT_EQ(names(), "b.txt a.txt ");
  form->ListView2.select_only(0);
  NMLVDISPINFOW typed{};
  typed.hdr = {form->ListView2.handle(), IDC_LISTVIEW2, static_cast<UINT>(LVN_ENDLABELEDITW)};
  wchar_t name[] = L"other.txt";
  typed.item.pszText = name;
  std::string told;
  const User user("Cannot Rename File", [&](HWND box) {  // these files are in memory only
    told = message_box_text(box);
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  SendMessageW(form->handle(), WM_NOTIFY, IDC_LISTVIEW2, reinterpret_cast<LPARAM>(&typed));
  EXPECT_TRUE(told.ends_with("C:\\docs\\a.txt")) << told;
}

TEST_F(Form1ViewerTest, TheFocusIsNeverLost) {
  std::string lines;
  for (int i = 0; i < 9000; ++i) lines += "line " + std::to_string(i) + "\r\n";
  list("needle\r\n" + lines, "b needle");
  form->show(SW_SHOW);
  click_row(0);
  form->Text1.focus();
  files.remove("C:\\docs\\a.txt");
  {
    const User user("Cannot Open File", [](HWND box) { PostMessageW(box, WM_COMMAND, IDOK, 0); });
    SendMessageW(form->handle(), WM_VSCROLL, SB_BOTTOM,
                 reinterpret_cast<LPARAM>(form->Text1.VScroll1.handle()));
  }
  EXPECT_FALSE(form->Text1.enabled());
  EXPECT_TRUE(form->ListView2.has_focus());
  click_row(1);
  form->Text1.focus();
  run(SearchKind::new_search, "nothing of the kind");
  win32::pump_pending();
  EXPECT_TRUE(form->cmdSearch.has_focus()) << "the list is empty";
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
