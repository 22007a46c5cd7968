#include <tuple>

#include "tests/windows/form1_fixture.h"
#include "win32/clipboard.h"

namespace tallowmere {
namespace {

class Form1ViewerTest : public Form1Test {
 protected:
  /// Lists the files in which "needle" occurs.
  void list(const std::string& first, const std::string& second = "") {
    files.add("C:\\docs\\a.txt", first);
    if (!second.empty()) files.add("C:\\docs\\b.txt", second);
    open();
    run(SearchKind::new_search, "needle");
  }
  void double_click() { notify_list(static_cast<UINT>(NM_DBLCLK)); }

  static std::string lines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += "line " + std::to_string(i) + "\r\n";
    return text;
  }

  /// "selected criteria: hyper caption, tip, +enabled" of the viewer, the search and the buttons.
  std::string hyper() const {
    const TextSelection selection = form->Text1.selection();
    return form->Text1.text().substr(static_cast<std::size_t>(selection.start),
                                     static_cast<std::size_t>(selection.length)) +
           " " + search.criteria + ": " + form->cmdHyper.text() + ", " +
           form->tool_tip(form->cmdHyper) + (form->cmdHyper.enabled() ? " +hyper" : "") +
           (form->cmdRestore.enabled() ? " +restore" : "");
  }
};

TEST_F(Form1ViewerTest, ASelectedRowShowsItsFirstHitInTheMiddle) {
  const std::string text = lines(200);
  list(text + "a needle\r\n" + text, "needle one, needle two");
  click_row(0);
  EXPECT_EQ(form->Text1.selection(), (TextSelection{static_cast<int>(text.size()) + 2, 6}));
  EXPECT_EQ(form->lblFileInfo.text().substr(0, 13), "3,790 bytes  ");
  EXPECT_EQ(200 - form->Text1.first_visible_line(), form->Text1.visible_lines() / 2);
  EXPECT_FALSE(form->cmdView.enabled()) << "it is on view";
  click_row(1);
  EXPECT_EQ(text_and_caption(), "needle one, needle two, b.txt - Tallowmere 32");
  for (const int start : {12, 0}) {
    double_click();  // steps through the hits
    EXPECT_EQ(form->Text1.selection(), (TextSelection{start, 6}));
  }
  for (int i = 0; i < 2; ++i) {
    click_column(2);  // a sort keeps the file on view
    win32::pump_pending();
  }
  EXPECT_EQ(names(), "b.txt a.txt ");
  EXPECT_EQ(form->ListView2.selected(), 0);
  EXPECT_EQ(form->results().viewed_index, 0);

  // Larger than the other file now: it goes to the list's end.
  files.add("C:\\docs\\b.txt", text + text + "needle", minute);
  const User user("File Has Changed", press_button(IDOK));
  form->cmdFindPrev_Click();
  EXPECT_EQ(names(), "a.txt b.txt ");
  EXPECT_EQ(form->ListView2.selected(), 1);
}

TEST_F(Form1ViewerTest, TheNoteSaysWhichHitHasBeenMet) {
  list("needle one, needle two, dog, needle", lines(90000) + "needle dog");
  const auto wait_for = [&](const std::string& note) {
    while (form->lblNote.text() != note) win32::pump_pending();
  };
  const auto user_selects = [&](int start, int length) {
    form->Text1.select(start, length);
    SendMessageW(form->Text1.handle(), WM_KEYUP, VK_RIGHT, 0);
  };
  click_row(0);
  wait_for("hit 1 of 3");
  std::string notes;
  for (const int id : {ID_MNUFINDNEXT, ID_MNUFINDNEXT, ID_MNUFINDNEXT, ID_MNUFINDPREV}) {
    choose(id);
    notes += form->lblNote.text() + ", ";
  }
  EXPECT_EQ(notes, "hit 2 of 3, hit 3 of 3, hit 1 of 3, hit 3 of 3, ");
  user_selects(24, 3);
  EXPECT_EQ(form->lblNote.text(), "");
  choose(ID_MNUHYPER);
  wait_for("hit 1 of 1");
  choose(ID_MNURESTORE);
  wait_for("hit 1 of 3");
  user_selects(12, 0);
  choose(ID_MNUFINDNEXT);
  EXPECT_EQ(form->lblNote.text(), "hit 3 of 3") << "counted already, from wherever it is met";
  click_row(1);
  wait_for("hit 1 of 1");
}

TEST_F(Form1ViewerTest, HyperFindInItsThreeStates) {
  list("needle dog bird dog needle bird");
  click_row(0);
  const std::tuple<std::string, int, std::string> steps[] = {
      {"needle", 0, "needle needle: HyperFind, Find Selected Text"},  // only repeats them
      {"dog", 0, "dog needle: HyperFind, Find Selected Text +hyper"},
      {"dog", ID_MNUHYPER, "dog dog: HyperFind, Find Selected Text +restore"},
      {"bird", 0, "bird dog: HyperFind, Find Selected Text +hyper +restore"},
      {"bird", ID_MNUHYPER, "bird bird: HyperFind, Find Selected Text +restore"},
      {"", ID_MNURESTORE, "needle needle: Restore Hyper, Redo Last HyperFind +hyper"},
      {"dog", 0, "dog needle: HyperFind, Find Selected Text +hyper"},
      {"", ID_MNUHYPER, "bird bird: HyperFind, Find Selected Text +restore"}};
  for (const auto& [selected, command, expected] : steps) {
    form->Text1.select(static_cast<int>(form->Text1.text().find(selected)),
                       static_cast<int>(selected.size()));
    SendMessageW(form->Text1.handle(), WM_KEYUP, VK_RIGHT, 0);
    if (command != 0) choose(command);
    EXPECT_EQ(hyper(), expected);
  }
}

TEST_F(Form1ViewerTest, AUnicodeFileShowsAndGivesAwayItsCharacters) {
  const std::string text = "Привет, 😀 needle и 中\r\nneedle";
  files.add("C:\\docs\\a.txt", "\xEF\xBB\xBF" + text);
  open();
  search.unicode_text = true;
  run(SearchKind::new_search, "needle");
  click_row(0);
  EXPECT_EQ(form->Text1.text(), text);
  for (const int start : {11, 23, 11}) {
    EXPECT_EQ(form->Text1.selection(), (TextSelection{start, 6}));
    choose(ID_MNUFINDNEXT);
  }
  form->Text1.select(0, 10);
  SendMessageW(form->Text1.handle(), WM_KEYUP, VK_RIGHT, 0);
  EXPECT_TRUE(form->cmdHyper.enabled());
  choose(ID_MNUCOPYTOCLIPBOARD);
  EXPECT_EQ(win32::clipboard_text(form->handle()), "Привет, 😀");
  choose(ID_MNUHYPER);
  EXPECT_EQ(search.criteria, "Привет, 😀");
}

TEST_F(Form1ViewerTest, StopEndsAStep) {
  list("a needle" + std::string(8 << 20, '.'));
  click_row(0);
  int reads = 0;
  files.on_read = [&] {
    Sleep(12);  // events are served now and then
    if (++reads == 2) PostMessageW(form->handle(), WM_COMMAND, ID_MNUSTOP, 0);
  };
  form->cmdFindNext_Click();
  EXPECT_LT(reads, 8);
  EXPECT_FALSE(form->finding());
  EXPECT_EQ(form->Text1.selection(), (TextSelection{2, 6}));
}

TEST_F(Form1ViewerTest, ANameBeingTypedBelongsToItsFileWhereverItsRowGoes) {
  list("a needle", "b needle, longer");
  click_row(0);
  form->ListView2.edit_label();
  const HWND edit = ListView_GetEditControl(form->ListView2.handle());
  SetWindowTextW(edit, L"other.txt");
  form->mnuSort_Click(2);
  ASSERT_EQ(names(), "b.txt a.txt ");
  form->ListView2.select_only(0);
  std::string told;
  {
    const User user("Cannot Rename File", press_button(IDOK, &told));  // it is in memory only
    SendMessageW(edit, WM_KEYDOWN, VK_RETURN, 0);
  }
  EXPECT_TRUE(told.ends_with("C:\\docs\\a.txt")) << told;
}

TEST_F(Form1ViewerTest, ACommandFromTheTextIsForItsFile) {
  list("a needle", "b needle");
  form->show(SW_SHOW);
  click_row(0);
  form->ListView2.select_only(1);
  form->Text1.focus();
  const User user("Remove Files", press_button(IDYES));
  choose(ID_MNUREMOVE);
  EXPECT_EQ(names(), "b.txt ");
}

TEST_F(Form1ViewerTest, TheSelectedFileIsLaunched) {
  files.add("C:\\docs\\gone.exe", "needle");
  list("needle");
  form->ListView2.select_only(1);
  const User user("Cannot Launch", [](HWND box) {
    EXPECT_TRUE(message_box_text(box).ends_with("START C:\\docs\\gone.exe"));
    press_button(IDOK)(box);
  });
  choose(ID_MNULAUNCH);
}

TEST_F(Form1ViewerTest, TheFocusIsNeverLost) {
  list("needle\r\n" + lines(9000), "b needle");
  form->show(SW_SHOW);
  click_row(0);
  form->Text1.focus();
  files.remove("C:\\docs\\a.txt");
  {
    const User user("Cannot Open File", press_button(IDOK));
    SendMessageW(form->handle(), WM_VSCROLL, SB_BOTTOM,
                 reinterpret_cast<LPARAM>(form->Text1.VScroll1.handle()));
  }
  EXPECT_EQ(text_and_caption(), ", Tallowmere 32");
  EXPECT_FALSE(form->Text1.enabled());
  EXPECT_TRUE(form->cmdView.enabled()) << "for another try";
  EXPECT_TRUE(form->ListView2.has_focus());
  click_row(1);
  form->Text1.focus();
  run(SearchKind::new_search, "nothing of the kind");
  win32::pump_pending();
  EXPECT_EQ(text_and_caption() + form->lblFileInfo.text(), ", Tallowmere 32");
  EXPECT_TRUE(form->cmdSearch.has_focus()) << "the list is empty";
}

TEST_F(Form1ViewerTest, FontCommandsShowAtOnceAndAreKept) {
  open();
  choose(ID_MNULARGERFONT);
  const int lines_of_larger = form->Text1.visible_lines();
  for (int i = 0; i < 40; ++i) choose(ID_MNUSMALLERFONT);
  EXPECT_GT(form->Text1.visible_lines(), lines_of_larger);
  choose(ID_MNUEXIT);
  EXPECT_EQ(settings.get_setting("font_size"), "6");
}

}  // namespace
}  // namespace tallowmere
