#include <thread>

#include "engine/unicode.h"
#include "tests/windows/dialogs_support.h"
#include "tests/windows/form1_fixture.h"

namespace tallowmere {
namespace {

class Form1NoteTest : public Form1Test {
 protected:
  void open_with_files() {
    for (const char name : {'a', 'b', 'c'}) {
      files.add(std::string("C:\\docs\\") + name, "lantern oil", minute);
    }
    open();
    form->show(SW_SHOW);
  }

  void run_any_word(SearchKind kind, const std::string& criteria) {
    CriteriaInput input;
    input.criteria = criteria;
    input.search_type = search_or;
    form->run_search(kind, input);
  }

  void press(WPARAM key) {
    MSG message{GetFocus(), WM_KEYDOWN, key, 1, 0, {}};
    win32::dispatch_message(message);
    win32::pump_pending();
  }

  /// Clicks on the last letters of the note, which are its link's.
  void click_note() {
    RECT area;
    GetClientRect(form->lblNote.handle(), &area);
    const LPARAM at = MAKELPARAM(area.right - 10, area.bottom / 2);
    SendMessageW(form->lblNote.handle(), WM_LBUTTONDOWN, MK_LBUTTON, at);
    SendMessageW(form->lblNote.handle(), WM_LBUTTONUP, 0, at);
    win32::pump_pending();
  }

  /// Moves the selection off the hit, of which there is then nothing to say.
  void leave_hit() {
    form->Text1.select(0, 0);
    SendMessageW(form->Text1.handle(), WM_KEYUP, VK_LEFT, 0);
  }

  HWND tab_stop_behind_the_viewer() const {
    return GetNextDlgTabItem(form->handle(), form->Text1.handle(), FALSE);
  }
};

TEST_F(Form1NoteTest, TheLinkSwitchesUnicodeTextOnAndRepeatsTheSearch) {
  for (const WPARAM key : {VK_LBUTTON, VK_RETURN, VK_SPACE}) {
    SCOPED_TRACE(key);
    search.unicode_text = false;
    settings.save_setting("unicode_text", "N");
    files.clear();
    open_with_files();
    run(SearchKind::new_search, "lantern");
    EXPECT_FALSE(form->lblNote.visible());
    EXPECT_NE(tab_stop_behind_the_viewer(), form->lblNote.handle());
    files.add("C:\\docs\\b", "hay");
    run_any_word(SearchKind::list_search, "lantern жук");
    EXPECT_EQ(names(), "a c ");
    EXPECT_EQ(form->tool_tip(form->Label1), "lantern, then lantern жук");
    ASSERT_EQ(tab_stop_behind_the_viewer(), form->lblNote.handle());
    EXPECT_EQ(form->lblNote.text(),
              "The code page lacks a character of the criteria. <a id=\"0\">Read Unicode text</a>");

    // What was listed before is gone through again, and nothing else.
    files.add("C:\\docs\\b", "lantern");
    files.add("C:\\docs\\d", "lantern");
    search.criteria = "given up in the dialog";
    form->lblNote.focus();
    key == VK_LBUTTON ? click_note() : press(key);
    EXPECT_EQ(names(), "a b c ");
    EXPECT_EQ(search.criteria, "lantern жук");
    EXPECT_TRUE(search.unicode_text && entry_checked(ID_MNUUNICODE));
    EXPECT_FALSE(form->lblNote.visible());
    EXPECT_TRUE(form->ListView2.has_focus());
    form->ListView2.select_only(0);
    run(SearchKind::file_search, "oil");
    EXPECT_EQ(form->tool_tip(form->Label1), "lantern, then lantern жук");
    choose(ID_NOTELINK);  // nothing happens
    EXPECT_EQ(names(), "a b c ");
  }
}

TEST_F(Form1NoteTest, WhatWasReadByteByByteIsCountedThenFoundAndNamed) {
  files.add("C:\\docs\\u", std::string("\xFF\xFEo\0i\0l\0", 8), minute);
  open_with_files();
  run(SearchKind::new_search, "oil");
  EXPECT_EQ(form->lblNote.text(),
            "1 Unicode file was searched byte by byte. <a id=\"0\">Read Unicode text</a>");
  click_note();
  EXPECT_EQ(names(), "a b c u ");
  click_row(3);
  EXPECT_TRUE(form->lblNote.text().starts_with("UTF-16, hit 1")) << form->lblNote.text();
  click_row(0);
  EXPECT_TRUE(form->lblNote.text().starts_with("UTF-8, hit 1")) << form->lblNote.text();

  std::string many;
  for (int i = 0; i < 200; ++i) append_utf8(many, static_cast<char32_t>(0x4E00 + i));
  {
    std::string told;
    const User user("Cannot Search", press_button(IDOK, &told));
    run(SearchKind::list_search, many);
  }
  EXPECT_EQ(names(), "a b c u ");
  EXPECT_EQ(search.criteria, many) << "typed for nothing";
}

TEST_F(Form1NoteTest, AFileSearchIsRepeatedWhereverItsFileStandsNow) {
  open_with_files();
  run(SearchKind::new_search, "oil");
  form->ListView2.select_only(0);
  run_any_word(SearchKind::file_search, "oil жук");
  for (int i = 0; i < 2; ++i) click_column(0);
  EXPECT_EQ(names(), "c b a ");
  files.add("C:\\docs\\a", "hay", minute);
  click_note();
  EXPECT_EQ(text_and_caption(), "hay, a - Tallowmere 32") << "as it is read now";
  EXPECT_EQ(form->Label1.text(), "Selected File Didn't Match");
  EXPECT_EQ(names(), "c b a ");
}

TEST_F(Form1NoteTest, LinksAreReachedByTabAndMouseAlsoBesideAFileOnView) {
  files.add("C:\\docs\\u", std::string("\xFF\xFEo\0i\0l\0", 8), minute);
  files.add("C:\\docs\\x", "").unreadable = true;
  open_with_files();
  run(SearchKind::new_search, "oil");
  click_row(0);
  EXPECT_TRUE(form->lblNote.text().ends_with(
      "1 Unicode file was searched byte by byte. <a id=\"0\">Read Unicode text</a>; <a id=\"1\">1 "
      "file was not read</a>"));
  const auto opens = [&](auto act) {
    const User user("Files Not Read", press_button(IDCANCEL));
    act();
  };
  opens([&] { click_note(); });
  for (const bool backwards : {false, true}) {
    form->lblNote.focus();
    press(VK_TAB);
    EXPECT_TRUE(form->lblNote.has_focus());
    opens([&] { press(VK_SPACE); });
    form->lblNote.focus();
    if (!backwards) press(VK_TAB);
    BYTE keys[256] = {};
    keys[VK_SHIFT] = backwards ? 0x80 : 0;
    SetKeyboardState(keys);
    press(VK_TAB);
    keys[VK_SHIFT] = 0;
    SetKeyboardState(keys);
    EXPECT_FALSE(form->lblNote.has_focus());
  }
  EXPECT_FALSE(search.unicode_text);
  files.remove("C:\\docs\\x");
  search.date_search = 2;
  run(SearchKind::new_search, "oil");
  EXPECT_EQ(form->lblNote.text(), "4 files are outside the dates");
  choose(ID_NOTELINK + 1);  // nothing happens
}

TEST_F(Form1NoteTest, TheEntryIsKeptAndShowsTheFileAfresh) {
  open_with_files();
  EXPECT_FALSE(entry_checked(ID_MNUUNICODE));
  run(SearchKind::new_search, "oil");
  click_row(0);
  files.add("C:\\docs\\a", "other oil", minute);
  for (const char* text : {"other oil", "third oil"}) {
    choose(ID_MNUUNICODE);
    EXPECT_EQ(text_and_caption(), std::string(text) + ", a - Tallowmere 32");
    files.add("C:\\docs\\a", "third oil", minute);
  }
  choose(ID_MNUUNICODE);
  choose(ID_MNUEXIT);
  search.unicode_text = false;
  start(settings);
  EXPECT_TRUE(entry_checked(ID_MNUUNICODE));
}

TEST_F(Form1NoteTest, TheFileInformationComesFirst) {
  open_with_files();
  SetWindowPos(form->handle(), nullptr, 0, 0, 10, 10, SWP_NOZORDER | SWP_NOACTIVATE);
  run(SearchKind::new_search, "oil");
  click_row(0);
  leave_hit();
  const auto place_of = [](const win32::Control& control) {
    RECT place;
    GetWindowRect(control.handle(), &place);
    return place;
  };
  const RECT row = place_of(form->lblFileInfo);
  const std::string info = form->lblFileInfo.text();
  const std::string sentence = "12 Unicode files were searched byte by byte.";
  const std::string link = "<a id=\"0\">Read Unicode text</a>";
  for (const bool fits : {true, false}) {
    const std::string text = fits ? sentence : sentence + " " + sentence + " " + sentence;
    form->lblNote.show({{{text, NoteLink::read_unicode_text, "Read Unicode text"}}}, true);
    EXPECT_EQ(form->lblNote.text(), fits ? text + " " + link : link);
    EXPECT_EQ(form->tool_tip(form->lblNote), fits ? "" : text);
    const RECT rest = place_of(form->lblFileInfo);
    const RECT note = place_of(form->lblNote);
    EXPECT_EQ(form->lblFileInfo.text(), info);
    EXPECT_TRUE(rest.left == row.left && rest.top == row.top && rest.bottom == row.bottom);
    EXPECT_LT(rest.right, note.left);
    EXPECT_TRUE(note.right == row.right && note.top == row.top && note.bottom == row.bottom);
  }
  run(SearchKind::file_search, "жук");
  SetWindowPos(form->handle(), nullptr, 0, 0, 1600, 600, SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_EQ(place_of(form->lblNote).right, place_of(form->ListView2).right);
  run(SearchKind::file_search, "oil");
  leave_hit();
  EXPECT_EQ(place_of(form->lblFileInfo).right, place_of(form->ListView2).right);
}

TEST_F(Form1NoteTest, AFolderDroppedOnTheIdleWindowIsTheOneToSearch) {
  open_with_files();
  files.add("C:\\hay\\in\\d", "lantern");
  files.folder_errors["C:\\hay\\in\\d\\"] = {267, "Not a folder"};
  const auto drop = [&] { drop_on(form->handle(), std::wstring(L"C:\\hay\\in\\d", 12)); };
  EXPECT_TRUE(GetWindowLongPtrW(form->handle(), GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
  EnableWindow(form->handle(), FALSE);  // as below a dialog
  drop();
  EXPECT_EQ(search.path, "C:\\docs\\");
  EnableWindow(form->handle(), TRUE);
  drop();
  EXPECT_EQ(form->lblNote.text(), "Folder to search: C:\\hay\\in");
  run(SearchKind::new_search, "lantern");
  EXPECT_EQ(names() + form->lblNote.text(), "d ");
  SendMessageW(form->handle(), WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(settings.get_setting("recent_folder1"), "C:\\hay\\in");
}

/// Two seconds pass from one look at it to the next.
class PassingClock : public FixedClock {
 public:
  double seconds_since_midnight() const override { return seconds_ += 2; }

 private:
  mutable double seconds_ = 0;
};

TEST_F(Form1NoteTest, ARunThatLastsShowsItsFolderAsFarAsThereIsRoom) {
  const PassingClock passing;
  std::string deep;
  for (int i = 0; i < 40; ++i) deep += "folder " + std::to_string(i) + "\\";
  files.add("C:\\docs\\" + deep + "a", "lantern");
  settings.save_setting("path", "C:\\docs\\" + deep);
  settings.save_setting("checked", "YNNNNNNYNNYNNNNNYYN");
  form = std::make_unique<Form1>(
      Form1::Services{search, settings, files, passing, page, "C:\\program\\"});
  files.hang_next(HangingFiles::Call::open);
  std::string shown;
  RECT label{}, row{};
  const std::jthread user([&] {
    files.wait_for_hang();
    while ((shown = form->lblNote.text()).empty()) Sleep(10);
    GetWindowRect(form->lblNote.handle(), &label);
    GetWindowRect(form->ListView2.handle(), &row);
    files.release();
  });
  run(SearchKind::new_search, "hay");
  EXPECT_TRUE(shown.starts_with("C:\\…\\folder ")) << shown;
  EXPECT_TRUE(shown.ends_with("\\folder 38\\folder 39\\")) << shown;
  EXPECT_EQ(label.right, row.right);
  EXPECT_GT(label.left, row.left);
  EXPECT_LT(label.left, row.left + (row.right - row.left) / 3) << "room is left";
  EXPECT_EQ(form->lblNote.text(), "");
}

}  // namespace
}  // namespace tallowmere
