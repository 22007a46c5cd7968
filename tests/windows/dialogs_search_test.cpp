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
  frmSearchFor form{world.hand.window(), world.context()};
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
         form.path().chkFileType.click();
         form.path().Command1.click();
       },
       [&] {
         EXPECT_TRUE(IsWindowEnabled(form.handle()) && form.txtSearchFor.has_focus());
         EXPECT_FALSE(IsWindowEnabled(world.hand.window()));
         EXPECT_EQ(panel(0), "All Files");
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
