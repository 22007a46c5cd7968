#include "dialogs/frmDate.h"
#include "dialogs/frmNarrow.h"
#include "dialogs/frmProximity.h"
#include "dialogs/frmSearchFor.h"
#include "dialogs/resource.h"
#include "tests/windows/dialogs_support.h"
#include "tests/windows/picture.h"
#include "win32/clipboard.h"

namespace tallowmere {
namespace {

class SearchForTest : public testing::Test {
 protected:
  SearchForTest() {
    world.search.path = "C:\\docs";
    world.search.drive = "C:\\";
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
  RecentSearches recent;
  frmSearchFor form{world.hand.window(), world.context(), recent};
};

TEST_F(SearchForTest, ALongFolderIsShortenedInItsMiddleAndKeptWhole) {
  const auto folder = [](std::string path, int middle, const char* end) {
    for (int i = 0; i < middle; ++i) path += "\\one of many folders";
    return path + end;
  };
  world.search.path = folder("C:\\first", 8, "\\last");
  ask(true, SearchKind::new_search, {[&] {
        EXPECT_EQ(panel(1), world.search.path + "\\+");
        const auto shown = picture_of(form.StatusBar1.handle());
        const std::pair<std::string, bool> others[] = {
            {folder("C:\\first", 9, "\\last\\+"), true},
            {folder("C:\\first", 8, "\\lost\\+"), false},
            {folder("C:\\thirst", 8, "\\last\\+"), false},
            {"C:\\first\\last\\+", false}};
        for (const auto& [other, same] : others) {
          form.StatusBar1.set_part(1, other);
          EXPECT_EQ(picture_of(form.StatusBar1.handle()) == shown, same) << other;
        }
        press(form.txtSearchFor, VK_RETURN);
      }});
}

TEST_F(SearchForTest, KeysFocusAndSummaryFollowWhatWasChosen) {
  ask(false, SearchKind::new_search,
      {[&] {
         HWND control = GetFocus();
         for (const int next :
              {IDC_SEARCH_OPTION + 2, IDC_SEARCH_CHECK1, IDC_SEARCH_WHERE, IDC_SEARCH_DATES, IDOK,
               IDCANCEL, IDC_SEARCH_PASTE, IDC_SEARCH_HELP, IDC_SEARCH_TEXT}) {
           control = GetNextDlgTabItem(form.handle(), control, FALSE);
           EXPECT_EQ(GetDlgCtrlID(control), next);
         }
         form.Option1[3].click();
         EXPECT_TRUE(form.cmdProximity.enabled());
         form.Option1[3].focus();
         press(form.Option1[3], VK_UP);
       },
       [&] {
         EXPECT_TRUE(form.Option1[2].selected() && !form.cmdProximity.enabled());
         press(form.Check1, VK_F1);
       },
       [&] {
         EXPECT_EQ(GetActiveWindow(), form.hints().handle());
         form.hints().Command1.click();
       },
       [&] { form.cmdWhere.click(); },
       [&] {
         EXPECT_FALSE(IsWindowEnabled(form.handle()));
         EXPECT_EQ(SendMessageW(form.StatusBar1.handle(), SB_GETPARTS, 0, 0), 3);
         form.path().chkFileType.click();
         form.path().txtLeaveOut.set_text(".git; *.bak");
         form.path().Command1.click();
       },
       [&] {
         EXPECT_TRUE(IsWindowEnabled(form.handle()) && form.txtSearchFor.has_focus());
         EXPECT_FALSE(IsWindowEnabled(world.hand.window()));
         EXPECT_EQ(panel(0) + ", " + panel(3), "All Files, Not .git; *.bak");
         press(form.txtSearchFor, VK_ESCAPE);
       }});
}

class RecentTest : public SearchForTest {
 protected:
  RecentTest() {
    SearchCriteria other = world.search;
    other.criteria = "new words";
    recent.begun(other);
    other.criteria = "big dog";
    other.search_type = search_near;
    other.match_case = other.prox_all = other.type_checked[1] = true;
    other.prox_before = 20;
    other.path = "D:\\gone";
    other.user_types[1] = "txt";
    other.date_search = previous_days;
    recent.begun(other);
  }

  const win32::ListBox& list() { return form.recent().lstRecent; }
  void click(int row) {
    const int height = static_cast<int>(SendMessageW(list().handle(), LB_GETITEMHEIGHT, 0, 0));
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP}) {
      PostMessageW(list().handle(), message, 0, MAKELPARAM(5, row * height + 2));
    }
  }
  /// What the newest search has filled in.
  void check_choice(const char* dates, const char* path) {
    EXPECT_TRUE(form.txtSearchFor.has_focus() && !form.recent().is_open());
    const CriteriaInput input = form.input();
    EXPECT_EQ(input.criteria + std::to_string(input.prox_before), "big dog20");
    EXPECT_TRUE(form.cmdProximity.enabled() && input.match_case && input.prox_all);
    EXPECT_EQ(panel(2), dates);
    EXPECT_EQ(world.search.path, path);
  }
};

TEST_F(RecentTest, AChoiceFillsInEverythingAndCancelTakesItBack) {
  const auto open = [&] { press(form.txtSearchFor, VK_F4); };
  const auto choose = [&] {
    EXPECT_TRUE(list().row_text(0).starts_with("big dog \u00B7 Proximity Words, Match Case"));
    press(list(), VK_RETURN);
  };
  bool begun = false;
  for (const bool begins : {false, true, false}) {
    begun = begun || begins;
    ask(begins, SearchKind::new_search,
        {open, choose,
         [&] {
           check_choice("Today", "D:\\gone");
           EXPECT_EQ(panel(0) + world.search.type_descriptions[1], "txtText Document");
           open();
         },
         [&] {
           EXPECT_TRUE(list().has_focus());
           PostMessageW(form.handle(), WM_COMMAND, begins ? IDOK : IDCANCEL, 0);
         }});
    EXPECT_FALSE(form.recent().is_open());
    EXPECT_EQ(world.search.path + world.search.user_types[1], begun ? "D:\\gonetxt" : "C:\\docs");
    EXPECT_EQ(world.search.date_search == all_dates, !begun);
  }
}

TEST_F(RecentTest, TheListClosesWithoutTheDialogAndLosesItsEntries) {
  const win32::Button& button = form.recent().cmdRecent;
  const auto closed = [&](const win32::Control& focused) {
    EXPECT_TRUE(!form.recent().is_open() && focused.has_focus());
    button.click();
    EXPECT_TRUE(list().has_focus());
  };
  const auto press_at = [](HWND window) {
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
  };
  ask(false, SearchKind::list_search,
      {[&] { PostMessageW(form.txtSearchFor.handle(), WM_SYSKEYDOWN, VK_DOWN, 1 << 29); },
       [&] { press(list(), VK_ESCAPE); }, [&] { closed(form.txtSearchFor), press(list(), VK_TAB); },
       [&] { closed(button), press_at(button.handle()); },
       [&] { closed(form.txtSearchFor), press_at(form.handle()); },
       [&] {
         closed(form.txtSearchFor);
         ShowWindow(list().handle(), SW_HIDE);  // as when the user comes back from elsewhere
         form.cmdBegin.focus();
         list().focus();
         closed(form.txtSearchFor);
         click(0);
       },
       [&] {
         check_choice("All Dates", "C:\\docs");
         button.click();
         press(list(), VK_DELETE);
       },
       [&] {
         EXPECT_EQ(recent.entries()[0].criteria, "new words");
         click(1);
       },
       [&] {
         EXPECT_TRUE(recent.entries().empty() && !button.enabled());
         EXPECT_EQ(form.txtSearchFor.text(), "big dog");
         press(form.txtSearchFor, VK_ESCAPE);
       }});
}

TEST_F(SearchForTest, PasteSelectsTheTextAndSwitchesToPhrase) {
  world.search.search_type = search_or;
  const auto paste = [&](std::string_view text) {
    win32::Clipboard(form.handle()).set_text(text);
    form.cmdPaste.click();
    EXPECT_TRUE(form.txtSearchFor.has_focus());
  };
  ask(false, SearchKind::new_search, {[&] {
        paste("");
        EXPECT_TRUE(form.Option1[1].selected());
        paste("big r\u00E9d dog");
        EXPECT_TRUE(form.Option1[2].selected());
        form.txtSearchFor.select(4, 7);
        paste("big r\u00E9d dog");
        EXPECT_EQ(form.txtSearchFor.text(), "big big r\u00E9d dog dog");
        EXPECT_EQ(form.txtSearchFor.selection_start(), 4);
        EXPECT_EQ(form.txtSearchFor.selection_length(), 11);
        form.txtSearchFor.select(19, 19);
        paste(std::string(40000, 'x'));
        EXPECT_EQ(form.txtSearchFor.selection_length(), 32767 - 19);
        form.cmdCancel.click();
      }});
}

class DateTest : public testing::Test {
 protected:
  DateTest() {
    world.search.date_search = between_dates;
    world.search.from_date = {2023, 5, 6};
    world.search.to_date = {2023, 7, 8};
    world.search.s_month = 4;
    world.search.s_month_year = 2001;
    world.search.past_days = 12;
  }
  /// The fields that show, by their tips.
  std::string fields() {
    std::string all;
    for (SpinBox& box : form.Picture1) {
      EXPECT_EQ(box.visible(), box.arrows().visible());
      if (box.visible()) all += form.tool_tip(box.arrows()) + " " + box.text() + ", ";
    }
    return all;
  }

  DialogWorld world;
  int summaries = 0;
  frmDate form{world.hand.window(), world.context(), [this] { ++summaries; }};
};

TEST_F(DateTest, EachOptionShowsItsFields) {
  world.hand.show(form, {[&] {
                    EXPECT_TRUE(form.Option1[between_dates].has_focus());
                    EXPECT_TRUE(fields().ends_with("To month 7, To day 8, To year 2023, "));
                    form.Picture1[5].focus();
                    type(form.Picture1[5], "2024");
                    form.Option1[specific_month].click();
                    EXPECT_EQ(fields(), "Month 4, Year 2001, ");
                    press_mouse(form.Label1[previous_days]);
                    EXPECT_TRUE(form.Option1[previous_days].selected());
                    EXPECT_EQ(fields(), "Days 12, ");
                    form.Picture1[1].focus();
                    type(form.Picture1[1], "0");  // a number still being typed counts
                    press(form.Picture1[1], VK_RETURN);
                  }});
  EXPECT_EQ(world.search.date_search, previous_days);
  EXPECT_EQ(world.search.past_days, 0);
  EXPECT_EQ(world.search.to_date, (Date{2024, 7, 8}));
  EXPECT_EQ(summaries, 1);
}

TEST_F(DateTest, ChangingTheOptionLeavesNoPixelsBehind) {
  const auto redrawn = [this](UINT flags) {
    RedrawWindow(form.handle(), nullptr, nullptr, flags | RDW_UPDATENOW | RDW_ALLCHILDREN);
    return picture_of(form.handle());
  };
  world.hand.show(form, {[&] {
                    for (const int option : {2, 1, 4, 3, 1, 2, 3, 4, 1, 3, 2, 4, 1, 0, 1}) {
                      form.Option1[option].click();
                      const auto left = redrawn(0);
                      EXPECT_TRUE(left == redrawn(RDW_INVALIDATE | RDW_ERASE)) << option;
                    }
                    form.Command2.click();
                  }});
}

TEST_F(DateTest, CancelChangesNothingAndResetMeansToday) {
  for (int showing = 0; showing < 2; ++showing) {
    world.hand.show(form, {[&] {
                      EXPECT_TRUE(fields().starts_with("From month 5, From day 6, "));
                      form.Command3.click();
                      EXPECT_TRUE(fields().starts_with("From month 2, From day 29, "));
                      form.Option1[specific_year].click();
                      press(form.Option1[specific_year], VK_ESCAPE);
                    }});
  }
  EXPECT_EQ(world.search.date_search, between_dates);
  EXPECT_EQ(summaries, 0);
}

TEST(ProximityTest, ChangesTheFocusedCountRefusesZerosAndRestores) {
  Hand hand;
  frmProximity form(hand.window());
  const auto counts = [&] {
    return std::to_string(form.prox_before()) + "/" + std::to_string(form.prox_after());
  };
  const auto click_upper_arrow = [&](int index) {
    press_mouse(form.Picture1[index].arrows());
    SendMessageW(form.Picture1[index].arrows().handle(), WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
  };
  bool all = true;
  int before = 0, after = 995;
  form.ini_frmProximity(all, before, after);
  hand.show(form, {[&] {
                     EXPECT_TRUE(form.Option1[1].selected() && form.Picture1[0].has_focus());
                     click_upper_arrow(0);
                     click_upper_arrow(1);
                     EXPECT_EQ(counts(), "10/1000");
                     EXPECT_TRUE(form.Picture1[1].has_focus());
                     press(form.Picture1[1], VK_NEXT);
                   },
                   [&] {
                     EXPECT_EQ(form.Picture1[1].text(), "900");
                     type(form.Picture1[1], "25x\b");
                     press_mouse(form.Label1[0]);
                     EXPECT_TRUE(form.Picture1[0].has_focus());
                     form.Picture1[0].set_text("7000");
                     EXPECT_EQ(counts(), "1000/2");
                     form.Option1[0].click();
                     for (SpinBox& box : form.Picture1) box.set_value(0);
                     press(form.Picture1[0], VK_RETURN);
                   },
                   [&] { EXPECT_TRUE(answer_box(L"Tallowmere 32").starts_with("Only one value")); },
                   [&] {
                     form.cmdDefault.click();
                     EXPECT_EQ(counts(), "110/110");
                     EXPECT_TRUE(IsWindowVisible(form.handle()) && !form.prox_all());
                     press(form.Picture1[0], VK_ESCAPE);
                   }});
  EXPECT_EQ(counts(), "0/995");
  EXPECT_TRUE(form.prox_all() && form.Option1[1].selected());
}

class NarrowTest : public testing::Test {
 protected:
  bool ask(bool file_selectable, Hand::Step step) {
    bool accepted = false;
    hand.work([&] { accepted = form.ask(kind, 1, file_selectable); }, {std::move(step)});
    EXPECT_EQ(cancelled, !accepted);
    return accepted;
  }

  Hand hand;
  bool cancelled = false;
  SearchKind kind = SearchKind::list_search;
  frmNarrow form{hand.window(), cancelled};
};

TEST_F(NarrowTest, KeepsTheChoice) {
  EXPECT_TRUE(ask(true, [&] {
    EXPECT_EQ(form.Option1[2].text(), form.Label1[2].text()) << "to be read aloud";
    EXPECT_TRUE(form.Option1[1].has_focus());
    press_mouse(form.Label1[2]);
    EXPECT_FALSE(form.Option1[1].selected());
    press(form.Option1[2], VK_RETURN);
  }));
  EXPECT_EQ(kind, SearchKind::file_search);
  EXPECT_FALSE(ask(true, [&] {
    form.Option1[0].click();
    form.move_focus(form.Command2.handle());
    press(form.Command2, VK_RETURN);
  }));
  // Neither the option chosen last nor the button pressed last counts any more.
  EXPECT_TRUE(ask(true, [&] { press(form.Option1[2], VK_RETURN); }));
  EXPECT_EQ(kind, SearchKind::file_search);
  EXPECT_TRUE(ask(false, [&] {
    EXPECT_TRUE(form.Option1[0].selected() && !form.Option1[2].enabled());
    SendMessageW(form.Label1[1].handle(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 5));
  }));
  EXPECT_EQ(kind, SearchKind::list_search);
}

TEST_F(NarrowTest, TheLabelShowsTheFocusOfItsOption) {
  ask(true, [&] {
    const auto without = picture_of(form.Label1[0].handle());
    for (const int focused : {0, 1}) {
      form.Option1[focused].focus();
      EXPECT_EQ(picture_of(form.Label1[0].handle()) == without, focused == 1);
    }
    form.Command2.click();
  });
}

}  // namespace
}  // namespace tallowmere
