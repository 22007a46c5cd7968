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
  std::string path = "C:\\the first folder";
  for (int i = 0; i < 8; ++i) path += "\\one of many folders";
  path += "\\the last";
  world.search.path = path;
  ask(true, SearchKind::new_search, {[&] {
        EXPECT_EQ(panel(1), path + "\\+");
        const HDC canvas = GetDC(form.handle());
        const std::wstring text = shortened_folder(canvas, win32::wide(path + "\\+"), 300);
        EXPECT_TRUE(text.starts_with(L"C:\\the") && text.ends_with(L"...\\the last\\+"));
        SIZE size;
        GetTextExtentPoint32W(canvas, text.c_str(), static_cast<int>(text.size()), &size);
        EXPECT_LE(size.cx, 300);
        ReleaseDC(form.handle(), canvas);
        const Picture long_path = picture_of(form.StatusBar1.handle());
        form.StatusBar1.set_part(1, path.substr(0, 120));  // the same beginning
        EXPECT_FALSE(picture_of(form.StatusBar1.handle()) == long_path);
        press(form.txtSearchFor, VK_RETURN);
      }});
}

TEST_F(SearchForTest, KeysAndTheButtonsThatFollowThem) {
  ask(false, SearchKind::list_search,
      {[&] {
         EXPECT_EQ(tab_order(form.handle(), form.txtSearchFor.handle()),
                   (std::vector<int>{IDC_SEARCH_TEXT, IDC_SEARCH_OPTION + 2, IDC_SEARCH_CHECK1,
                                     IDC_SEARCH_DATES, IDOK, IDCANCEL, IDC_SEARCH_PASTE,
                                     IDC_SEARCH_HELP}));
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
         EXPECT_EQ(GetActiveWindow(), form.hints().handle());
         form.hints().Command1.click();
       },
       [&] { press(form.txtSearchFor, VK_ESCAPE); }});
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
        EXPECT_EQ(form.txtSearchFor.text().size(), 32768u) << "one letter has two bytes";
        form.cmdCancel.click();
      }});
}

TEST_F(SearchForTest, TheFocusAndTheSummaryFollowWhatWasChosen) {
  ask(false, SearchKind::new_search,
      {[&] { form.cmdWhere.click(); },
       [&] {
         EXPECT_FALSE(IsWindowEnabled(form.handle()));
         form.path().chkFileType.click();
         form.path().Command1.click();
       },
       [&] {
         EXPECT_TRUE(IsWindowEnabled(form.handle()) && form.txtSearchFor.has_focus());
         EXPECT_FALSE(IsWindowEnabled(world.hand.window()));
         EXPECT_EQ(panel(0), "All Files");
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
  /// What the fields show, and what their tips and those of their arrows say.
  std::string fields() {
    std::string texts, tips;
    for (SpinBox& box : form.Picture1) {
      texts += (box.visible() ? box.text() : "-") + " ";
      tips += form.tool_tip(box) + "|";
      EXPECT_EQ(box.visible(), box.arrows().visible());
      EXPECT_EQ(form.tool_tip(box.arrows()), form.tool_tip(box));
    }
    return texts + tips;
  }

  DialogWorld world;
  int summaries = 0;
  frmDate form{world.hand.window(), world.context(), [this] { ++summaries; }};
};

TEST_F(DateTest, EachOptionShowsItsFieldsAndTheirTabStops) {
  world.hand.show(
      form, {[&] {
        EXPECT_TRUE(form.Option1[between_dates].has_focus());
        EXPECT_EQ(fields(),
                  "5 6 2023 7 8 2023 From month|From day|From year|To month|To day|To year|");
        form.Picture1[5].focus();
        type(form.Picture1[5], "2024");
        form.Option1[specific_month].click();
        EXPECT_EQ(fields(), "4 - 2001 - - - Month||Year||||");
        EXPECT_FALSE(form.Label3.visible() || form.Label5.visible());
        EXPECT_EQ(tab_order(form.handle(), form.Option1[specific_month].handle()),
                  (std::vector<int>{IDC_DATE_OPTION + 3, IDC_DATE_PICTURE, IDC_DATE_PICTURE + 2,
                                    IDOK, IDCANCEL, IDC_DATE_RESET}));
        press_mouse(form.Label1[previous_days]);
        EXPECT_TRUE(form.Option1[previous_days].selected());
        EXPECT_EQ(fields(), "- 12 - - - - |Days|||||");
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
  constexpr UINT at_once = RDW_UPDATENOW | RDW_ALLCHILDREN;
  world.hand.show(form, {[&] {
                    for (const int option : {2, 1, 4, 3, 1, 2, 3, 4, 1, 3, 2, 4, 1, 0, 1}) {
                      form.Option1[option].click();
                      RedrawWindow(form.handle(), nullptr, nullptr, at_once);
                      const Picture left = picture_of(form.handle());
                      RedrawWindow(form.handle(), nullptr, nullptr,
                                   at_once | RDW_INVALIDATE | RDW_ERASE);
                      EXPECT_TRUE(left == picture_of(form.handle())) << option;
                    }
                    form.Command2.click();
                  }});
}

TEST_F(DateTest, CancelChangesNothingAndResetMeansToday) {
  world.hand.show(form, {[&] {
                    form.Command3.click();
                    EXPECT_TRUE(fields().starts_with("2 29 2024 2 29 2024 "));
                    form.Option1[specific_year].click();
                    press(form.Option1[specific_year], VK_ESCAPE);
                  }});
  EXPECT_EQ(world.search.date_search, between_dates);
  EXPECT_EQ(summaries, 0);
  world.hand.show(form, {[&] {
                    EXPECT_TRUE(fields().starts_with("5 6 2023 7 8 2023 "));
                    form.Command2.click();
                  }});
}

class ProximityTest : public testing::Test {
 protected:
  void fill(bool all, int before, int after) { form.ini_frmProximity(all, before, after); }
  void click_upper_arrow(int index) {
    RECT area;
    GetClientRect(form.Picture1[index].arrows().handle(), &area);
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP}) {
      SendMessageW(form.Picture1[index].arrows().handle(), message, MK_LBUTTON,
                   MAKELPARAM(area.right / 2, area.bottom / 4));
    }
  }
  std::string counts() const {
    return std::to_string(form.prox_before()) + "/" + std::to_string(form.prox_after());
  }

  Hand hand;
  frmProximity form{hand.window()};
};

TEST_F(ProximityTest, ArrowsKeysAndDigitsChangeTheFocusedCount) {
  fill(true, -7, 995);
  EXPECT_TRUE(form.Option1[1].selected());
  EXPECT_EQ(tab_order(form.handle(), form.Picture1[0].handle()),
            (std::vector<int>{IDC_PROX_PICTURE, IDC_PROX_PICTURE + 1, IDC_PROX_OPTION + 1, IDOK,
                              IDCANCEL, IDC_PROX_DEFAULT}));
  hand.show(form, {[&] {
                     EXPECT_TRUE(form.Picture1[0].has_focus());
                     click_upper_arrow(0);
                     click_upper_arrow(1);
                     EXPECT_EQ(counts(), "10/1000");
                     EXPECT_TRUE(form.Picture1[1].has_focus());
                     press(form.Picture1[1], VK_NEXT);
                     press(form.Picture1[1], VK_DOWN);
                   },
                   [&] {
                     EXPECT_EQ(form.Picture1[1].text(), "899");
                     EXPECT_EQ(form.Picture1[1].arrows().position(), 899);
                     type(form.Picture1[1], "25x\b");
                     press_mouse(form.Label1[0]);
                     EXPECT_TRUE(form.Picture1[0].has_focus());
                     SetWindowTextW(form.Picture1[0].handle(), L"7000");
                     press(form.Picture1[0], VK_RETURN);
                   }});
  EXPECT_EQ(counts(), "1000/2");
}

TEST_F(ProximityTest, RefusesAPairOfZerosAndCancelRestores) {
  fill(false, 30, 40);
  hand.show(form, {[&] {
                     form.Option1[1].click();
                     form.cmdDefault.click();
                     EXPECT_EQ(counts(), "110/110");
                     for (SpinBox& box : form.Picture1) box.set_value(0);
                     form.cmdOK.click();
                   },
                   [&] { EXPECT_TRUE(answer_box(L"Tallowmere 32").starts_with("Only one value")); },
                   [&] {
                     EXPECT_TRUE(IsWindowVisible(form.handle()) && form.prox_all());
                     EXPECT_EQ(form.Label6.text().find("that follow it also"), 0u);
                     press(form.Picture1[0], VK_ESCAPE);
                   }});
  EXPECT_EQ(counts(), "30/40");
  EXPECT_FALSE(form.prox_all() || form.Option1[1].selected());
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
    form.Option1[0].focus();
    form.Option1[0].click();
    form.move_focus(form.Command2.handle());
    press(form.Command2, VK_RETURN);
  }));
  EXPECT_EQ(kind, SearchKind::file_search);
  // Neither the option that had the focus last nor the button pressed last counts any more.
  EXPECT_TRUE(ask(true, [&] { press(form.Option1[2], VK_RETURN); }));
  EXPECT_EQ(kind, SearchKind::file_search);
  EXPECT_TRUE(ask(false, [&] {
    EXPECT_FALSE(form.Option1[2].enabled());
    EXPECT_TRUE(form.Option1[0].selected());
    SendMessageW(form.Label1[1].handle(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 5));
  }));
  EXPECT_EQ(kind, SearchKind::list_search);
}

TEST_F(NarrowTest, TheLabelShowsTheFocusOfItsOption) {
  ask(true, [&] {
    const Picture without = picture_of(form.Label1[0].handle());
    for (const int focused : {0, 1}) {
      form.Option1[focused].focus();
      EXPECT_EQ(picture_of(form.Label1[0].handle()) == without, focused == 1);
    }
    form.Command2.click();
  });
}

}  // namespace
}  // namespace tallowmere
