#include "dialogs/frmSearchFor.h"

#include "dialogs/resource.h"
#include "tests/windows/dialogs_support.h"
#include "tests/windows/picture.h"

namespace tallowmere {
namespace {

void set_clipboard(std::wstring_view text) {
  ASSERT_TRUE(OpenClipboard(nullptr));
  EmptyClipboard();
  if (!text.empty()) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    auto* units = static_cast<wchar_t*>(GlobalLock(memory));
    text.copy(units, text.size());
    units[text.size()] = L'\0';
    GlobalUnlock(memory);
    SetClipboardData(CF_UNICODETEXT, memory);
  }
  CloseClipboard();
}

class SearchForTest : public testing::Test {
 protected:
  SearchForTest() {
    world.search.criteria = "caf\xC3\xA9 \"big dog\"";
    world.search.search_type = search_or;
    world.search.match_case = true;
    world.search.prox_before = 20;
    world.search.prox_after = 5000;
    world.search.prox_all = true;
    world.search.path = "C:\\docs";
    world.search.drive = "C:\\";
    world.search.type_checked[1] = true;
    world.search.user_types[1] = "txt";
    world.search.date_search = specific_year;
    world.search.s_year = 1999;
    world.files.add("C:\\docs\\file", "");
  }

  std::string panel(int part) {
    wchar_t text[256] = L"";
    SendMessageW(form.StatusBar1.handle(), SB_GETTEXTW, part, reinterpret_cast<LPARAM>(text));
    return win32::narrow(text);
  }
  /// Shows the dialog; `begins` is the answer that it must give.
  void ask(bool begins, SearchKind kind, std::initializer_list<Hand::Step> steps) {
    bool begun = !begins;
    world.hand.work([&] { begun = form.ask(kind); }, steps);
    EXPECT_EQ(begun, begins);
    EXPECT_EQ(world.cancelled, !begins);
  }

  DialogWorld world;
  frmSearchFor form{world.hand.window(), world.context()};
};

TEST_F(SearchForTest, ShowsTheSearchAndBeginsWithEnter) {
  ask(true, SearchKind::new_search, {[&] {
        EXPECT_EQ(win32::Control(form.handle()).text(), "Search Criteria - New Search");
        EXPECT_TRUE(form.txtSearchFor.has_focus());
        EXPECT_EQ(panel(0), "txt");
        EXPECT_EQ(panel(1), "C:\\docs\\+");
        EXPECT_EQ(panel(2), "1999");
        EXPECT_TRUE(form.cmdWhere.enabled() && form.cmdDates.enabled());
        EXPECT_FALSE(IsWindowEnabled(world.hand.window()));
        press(form.txtSearchFor, VK_RETURN);
      }});
  const CriteriaInput input = form.input();
  EXPECT_EQ(input.criteria, "caf\xC3\xA9 \"big dog\"");
  EXPECT_EQ(input.search_type, search_or);
  EXPECT_TRUE(input.match_case);
  EXPECT_EQ(input.prox_before, 20);
  EXPECT_EQ(input.prox_after, 1000);
  EXPECT_TRUE(input.prox_all);
  EXPECT_EQ(world.search.prox_after, 1000);
}

TEST_F(SearchForTest, ALongFolderIsShortenedInItsMiddleAndKeptWhole) {
  std::string path = "C:\\the first folder";
  for (int i = 0; i < 8; ++i) path += "\\one of many folders";
  path += "\\the last";
  world.search.path = path;
  form.copy_current_to_dlgbox();
  ask(false, SearchKind::new_search, {[&] {
        EXPECT_EQ(panel(1), path + "\\+");
        const HDC canvas = GetDC(form.handle());
        const auto shortened = [&](int width) {
          return win32::narrow(shortened_folder(canvas, win32::wide(path + "\\+"), width));
        };
        const std::string text = shortened(300);
        EXPECT_TRUE(text.starts_with("C:\\the") && text.ends_with("...\\the last\\+")) << text;
        SIZE size;
        GetTextExtentPoint32W(canvas, win32::wide(text).c_str(), static_cast<int>(text.size()),
                              &size);
        EXPECT_LE(size.cx, 300);
        EXPECT_EQ(shortened(30000), path + "\\+");
        ReleaseDC(form.handle(), canvas);
        const Picture long_path = picture_of(form.StatusBar1.handle());
        form.StatusBar1.set_part(1, path.substr(0, 120));  // the same beginning
        EXPECT_FALSE(picture_of(form.StatusBar1.handle()) == long_path);
        form.cmdCancel.click();
      }});
}

TEST_F(SearchForTest, EachKindHasItsButtonsAndEscCancels) {
  ask(false, SearchKind::list_search, {[&] {
        EXPECT_FALSE(form.cmdWhere.enabled());
        EXPECT_TRUE(form.cmdDates.enabled());
        press(form.txtSearchFor, VK_ESCAPE);
      }});
  ask(false, SearchKind::file_search, {[&] {
        EXPECT_FALSE(form.cmdWhere.enabled() || form.cmdDates.enabled());
        form.cmdCancel.click();
      }});
}

TEST_F(SearchForTest, ProximityButtonFollowsTheTypeAndF1ShowsTheHints) {
  ask(false, SearchKind::new_search,
      {[&] {
         EXPECT_FALSE(form.cmdProximity.enabled());
         form.Option1[3].click();
         EXPECT_TRUE(form.cmdProximity.enabled());
         form.Option1[3].focus();
         press(form.Option1[3], VK_UP);
       },
       [&] {
         EXPECT_TRUE(form.Option1[2].selected());
         EXPECT_FALSE(form.cmdProximity.enabled());
         press(form.Check1, VK_F1);
       },
       [&] {
         EXPECT_EQ(win32::Control(GetActiveWindow()).text(), "Searching Hints");
         EXPECT_FALSE(IsWindowEnabled(form.handle()));
         form.hints().Command1.click();
       },
       [&] { form.cmdHelp.click(); },
       [&] {
         EXPECT_TRUE(IsWindowVisible(form.hints().handle()));
         form.hints().Command1.click();
       },
       [&] { form.cmdCancel.click(); }});
}

TEST_F(SearchForTest, PasteSelectsTheTextAndSwitchesToPhrase) {
  world.search.criteria = "";
  ask(false, SearchKind::new_search, {[&] {
        set_clipboard(L"");
        form.cmdPaste.click();
        EXPECT_EQ(form.txtSearchFor.text(), "");
        EXPECT_TRUE(form.Option1[1].selected());
        EXPECT_TRUE(form.txtSearchFor.has_focus());
        set_clipboard(L"big r\u00E9d dog");
        form.cmdPaste.click();
        EXPECT_TRUE(form.Option1[2].selected());
        form.txtSearchFor.select(4, 7);
        form.cmdPaste.click();
        EXPECT_EQ(form.txtSearchFor.text(), "big big réd dog dog");
        EXPECT_EQ(form.txtSearchFor.selection_start(), 4);
        EXPECT_EQ(form.txtSearchFor.selection_length(), 11);
        form.txtSearchFor.select(19, 19);
        set_clipboard(std::wstring(40000, L'x'));
        form.cmdPaste.click();
        EXPECT_EQ(form.txtSearchFor.selection_length(), 32767 - 19);
        form.cmdCancel.click();
      }});
}

TEST_F(SearchForTest, DialogsOpenFromButtonsAndRefreshTheSummary) {
  world.search.search_type = search_near;
  ask(true, SearchKind::new_search,
      {[&] { form.cmdWhere.click(); },
       [&] {
         EXPECT_FALSE(IsWindowEnabled(form.handle()));
         form.path().chkFileType.click();
         form.path().Command1.click();
       },
       [&] {
         EXPECT_TRUE(IsWindowEnabled(form.handle()));
         EXPECT_FALSE(IsWindowEnabled(world.hand.window()));
         EXPECT_TRUE(form.txtSearchFor.has_focus());
         EXPECT_EQ(panel(0), "All Files");
         form.cmdDates.click();
       },
       [&] {
         form.date().Option1[0].click();
         form.date().Command1.click();
       },
       [&] {
         EXPECT_EQ(panel(2), "All Dates");
         form.cmdProximity.click();
       },
       [&] {
         form.proximity().cmdDefault.click();
         form.proximity().cmdOK.click();
       },
       [&] { form.cmdBegin.click(); }});
  EXPECT_EQ(form.input().prox_before, 110);
}

TEST_F(SearchForTest, TabGoesFromTheTextThroughTypesToTheButtons) {
  form.copy_current_to_dlgbox();
  EXPECT_EQ(
      tab_order(form.handle(), form.txtSearchFor.handle()),
      (std::vector<int>{IDC_SEARCH_TEXT, IDC_SEARCH_OPTION + 1, IDC_SEARCH_CHECK1, IDC_SEARCH_WHERE,
                        IDC_SEARCH_DATES, IDOK, IDCANCEL, IDC_SEARCH_PASTE, IDC_SEARCH_HELP}));
  EXPECT_EQ(LOWORD(SendMessageW(form.handle(), DM_GETDEFID, 0, 0)), IDOK);
}

}  // namespace
}  // namespace tallowmere
