#include "dialogs/frmSearchFor.h"

#include "dialogs/resource.h"
#include "tests/windows/dialogs_support.h"

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
    world.search.ignore_case = false;
    world.search.prox_before = 20;
    world.search.prox_after = 5000;
    world.search.prox_all = true;
    world.search.path = "C:\\docs";
    world.search.drive = "C:\\";
    world.search.type_checked[1] = true;
    world.search.user_types[1] = "txt";
    world.search.date_search = between_dates;
    world.search.from_date = {2020, 1, 2};
    world.search.to_date = {2021, 3, 4};
    world.files.folders = {{"C:\\", {"docs"}}, {"C:\\docs\\", {}}};
  }

  std::string panel(int part) {
    wchar_t text[256] = L"";
    SendMessageW(form.StatusBar1.handle(), SB_GETTEXTW, part, reinterpret_cast<LPARAM>(text));
    return win32::narrow(text);
  }
  std::string caption() { return win32::Control(form.handle()).text(); }

  DialogWorld world;
  frmSearchFor form{world.hand.window(), world.context()};
};

TEST_F(SearchForTest, ShowsEveryCaption) {
  const std::vector<std::pair<win32::Control, std::string>> captions = {
      {form.Label1, "Find:"},
      {form.Label2, "Files Found Must Contain:"},
      {form.Option1[0], "All Words (space = &AND)"},
      {form.Option1[1], "Any Word (space = &OR)"},
      {form.Option1[2], "Single Phrase (space = &space)"},
      {form.Option1[3], "Proximity Words (space=&NEAR)"},
      {form.Check1, "Match Upper && Lower &Case"},
      {form.cmdWhere, "&Where To Search"},
      {form.cmdDates, "&Dates To Search"},
      {form.cmdProximity, "Set &Proximity"},
      {form.cmdPaste, "Paste"},
      {form.cmdBegin, "Begin"},
      {form.cmdCancel, "Cancel"},
      {form.cmdHelp, "&Help"}};
  for (const auto& [control, text] : captions) EXPECT_EQ(control.text(), text);
}

TEST_F(SearchForTest, ShowsTheSearchAndBeginsWithEnter) {
  bool begun = false;
  world.hand.work([&] { begun = form.ask(SearchKind::new_search); }, {[&] {
                    EXPECT_EQ(caption(), "Search Criteria - New Search");
                    EXPECT_TRUE(form.txtSearchFor.has_focus());
                    EXPECT_EQ(form.txtSearchFor.text(), "caf\xC3\xA9 \"big dog\"");
                    EXPECT_EQ(panel(0), "txt");
                    EXPECT_EQ(panel(1), "C:\\docs\\+");
                    EXPECT_EQ(panel(2), "2.1.2020 to 4.3.2021");
                    EXPECT_TRUE(form.cmdWhere.enabled() && form.cmdDates.enabled());
                    EXPECT_FALSE(IsWindowEnabled(world.hand.window()));
                    press(form.txtSearchFor, VK_RETURN);
                  }});
  EXPECT_TRUE(begun);
  EXPECT_FALSE(world.cancelled);
  const CriteriaInput input = form.input();
  EXPECT_EQ(input.criteria, "caf\xC3\xA9 \"big dog\"");
  EXPECT_EQ(input.search_type, search_or);
  EXPECT_TRUE(input.match_case);
  EXPECT_EQ(input.prox_before, 20);
  EXPECT_EQ(input.prox_after, 1000);
  EXPECT_TRUE(input.prox_all);
  EXPECT_EQ(world.search.prox_after, 1000);
  form.show_criteria("caf\xC3\xA9");
  EXPECT_EQ(form.input().criteria, "caf\xC3\xA9");
}

TEST_F(SearchForTest, EachKindHasItsCaptionAndButtonsAndEscCancels) {
  bool begun = true;
  world.hand.work([&] { begun = form.ask(SearchKind::list_search); }, {[&] {
                    EXPECT_EQ(caption(), "Search Criteria - List Search");
                    EXPECT_FALSE(form.cmdWhere.enabled());
                    EXPECT_TRUE(form.cmdDates.enabled());
                    press(form.txtSearchFor, VK_ESCAPE);
                  }});
  EXPECT_FALSE(begun);
  EXPECT_TRUE(world.cancelled);
  world.hand.work([&] { begun = form.ask(SearchKind::file_search); }, {[&] {
                    EXPECT_EQ(caption(), "Search Criteria - File Search");
                    EXPECT_FALSE(form.cmdWhere.enabled() || form.cmdDates.enabled());
                    form.cmdCancel.click();
                  }});
  EXPECT_FALSE(begun);
}

TEST_F(SearchForTest, ProximityButtonFollowsTheTypeAtOnce) {
  world.hand.work([&] { form.ask(SearchKind::new_search); },
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
                     form.cmdCancel.click();
                   }});
}

TEST_F(SearchForTest, PasteSelectsTheTextAndSwitchesToPhrase) {
  world.search.criteria = "";
  world.hand.work([&] { form.ask(SearchKind::new_search); }, {[&] {
                    set_clipboard(L"");
                    form.cmdPaste.click();
                    EXPECT_EQ(form.txtSearchFor.text(), "");
                    EXPECT_TRUE(form.Option1[1].selected());
                    EXPECT_TRUE(form.txtSearchFor.has_focus());
                    set_clipboard(L"big r\u00E9d dog");
                    form.cmdPaste.click();
                    EXPECT_EQ(form.txtSearchFor.selection_start(), 0);
                    EXPECT_EQ(form.txtSearchFor.selection_length(), 11);
                    EXPECT_TRUE(form.Option1[2].selected());
                    EXPECT_TRUE(form.txtSearchFor.has_focus());
                    form.txtSearchFor.select(4, 7);
                    form.cmdPaste.click();
                    EXPECT_EQ(form.txtSearchFor.text(),
                              "big big r\xC3\xA9"
                              "d dog dog");
                    EXPECT_EQ(form.txtSearchFor.selection_start(), 4);
                    EXPECT_EQ(form.txtSearchFor.selection_length(), 11);
                    form.txtSearchFor.select(19, 19);
                    set_clipboard(std::wstring(40000, L'x'));
                    form.cmdPaste.click();
                    EXPECT_EQ(form.txtSearchFor.text().size(), 32767u + 1);
                    EXPECT_EQ(form.txtSearchFor.selection_length(), 32767 - 19);
                    form.cmdCancel.click();
                  }});
}

TEST_F(SearchForTest, F1ShowsTheHints) {
  std::string hints;
  world.hand.work(
      [&] { form.ask(SearchKind::new_search); },
      {[&] { press(form.Check1, VK_F1); }, [&] { hints = answer_box(L"Searching Hints"); },
       [&] { form.cmdCancel.click(); }});
  EXPECT_NE(hints.find("Single Phrase"), std::string::npos);
}

TEST_F(SearchForTest, DialogsOpenFromButtonsAndRefreshTheSummary) {
  world.search.search_type = search_near;
  world.hand.work([&] { form.ask(SearchKind::new_search); },
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
  EXPECT_FALSE(world.cancelled);
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
