#include "dialogs/frmDate.h"

#include "dialogs/resource.h"
#include "tests/windows/dialogs_support.h"
#include "tests/windows/picture.h"

namespace tallowmere {
namespace {

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
  void open(std::initializer_list<Hand::Step> steps) {
    world.hand.work([this] { form.show(world.hand.window(), world.hand.window()); }, steps);
  }
  std::string fields() {
    std::string text;
    for (SpinBox& box : form.Picture1) {
      text += (box.visible() ? box.text() : "-") + " ";
      EXPECT_EQ(box.visible(), box.arrows().visible());
    }
    return text;
  }

  DialogWorld world;
  int summaries = 0;
  frmDate form{world.hand.window(), world.context(), [this] { ++summaries; }};
};

TEST_F(DateTest, EachOptionShowsItsFieldsAndTheirTabStops) {
  open({[&] {
    EXPECT_TRUE(form.Option1[between_dates].has_focus());
    EXPECT_EQ(fields(), "5 6 2023 7 8 2023 ");
    EXPECT_EQ(form.Label3.text() + form.Label4.text() + form.Label5.text(),
              "FromSearch files with dates...To");
    form.Option1[specific_month].click();
    EXPECT_EQ(fields(), "4 - 2001 - - - ");
    EXPECT_FALSE(form.Label3.visible() || form.Label5.visible());
    EXPECT_EQ(tab_order(form.handle(), form.Option1[specific_month].handle()),
              (std::vector<int>{IDC_DATE_OPTION + 3, IDC_DATE_PICTURE, IDC_DATE_PICTURE + 2, IDOK,
                                IDCANCEL, IDC_DATE_RESET}));
    SendMessageW(form.Label1[previous_days].handle(), WM_LBUTTONDOWN, MK_LBUTTON, 0);
    EXPECT_TRUE(form.Option1[previous_days].selected());
    EXPECT_EQ(fields(), "- 12 - - - - ");
    EXPECT_EQ(form.Label5.text(), "days, where 0=today.");
    form.Picture1[1].focus();
    type(form.Picture1[1], "0");  // a number still being typed counts
    press(form.Picture1[1], VK_RETURN);
  }});
  EXPECT_EQ(world.search.date_search, previous_days);
  EXPECT_EQ(world.search.past_days, 0);
  EXPECT_EQ(summaries, 1);
}

TEST_F(DateTest, EachFieldSaysWhatItIs) {
  const auto tips = [this] {
    std::string text;
    for (SpinBox& box : form.Picture1) {
      text += form.tool_tip(box) + "|";
      EXPECT_EQ(form.tool_tip(box.arrows()), form.tool_tip(box));
    }
    return text;
  };
  open({[&] {
    EXPECT_EQ(tips(), "From month|From day|From year|To month|To day|To year|");
    form.Option1[specific_month].click();
    EXPECT_EQ(tips(), "Month||Year||||");
    form.Option1[previous_days].click();
    EXPECT_EQ(tips(), "|Days|||||");
    form.Command2.click();
  }});
}

TEST_F(DateTest, ChangingTheOptionLeavesNoPixelsBehind) {
  open({[&] {
    const HWND window = form.handle();
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    for (const int option : {2, 1, 4, 3, 1, 2, 3, 4, 1, 3, 2, 4, 1, 0, 1}) {
      form.Option1[option].click();
      RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
      const Picture left = picture_of(window);
      RedrawWindow(window, nullptr, nullptr,
                   RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
      EXPECT_TRUE(left == picture_of(window)) << option;
    }
    form.Command2.click();
  }});
}

TEST_F(DateTest, OkMendsTheDayAndTheOrder) {
  open({[&] {
          form.Picture1[3].focus();
          press(form.Picture1[3], VK_HOME);
          press(form.Picture1[3], VK_UP);
        },
        [&] {
          type(form.Picture1[4], "31");
          type(form.Picture1[5], "2022");
          EXPECT_EQ(fields(), "5 6 2023 2 31 2022 ");
          form.Command1.click();
        }});
  EXPECT_EQ(world.search.from_date, (Date{2022, 2, 28}));
  EXPECT_EQ(world.search.to_date, (Date{2023, 5, 6}));
}

TEST_F(DateTest, CancelChangesNothingAndResetMeansToday) {
  open({[&] {
    form.Command3.click();
    EXPECT_EQ(fields(), "2 29 2024 2 29 2024 ");
    form.Option1[specific_year].click();
    press(form.Option1[specific_year], VK_ESCAPE);
  }});
  EXPECT_EQ(world.search.date_search, between_dates);
  EXPECT_EQ(world.search.from_date, (Date{2023, 5, 6}));
  EXPECT_EQ(summaries, 0);
  open({[&] {
    EXPECT_EQ(fields(), "5 6 2023 7 8 2023 ");
    form.Command2.click();
  }});
}

}  // namespace
}  // namespace tallowmere
