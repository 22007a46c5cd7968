#include "dialogs/frmProximity.h"

#include "dialogs/resource.h"
#include "tests/windows/dialogs_support.h"

namespace tallowmere {
namespace {

class ProximityTest : public testing::Test {
 protected:
  void open(std::initializer_list<Hand::Step> steps) {
    hand.work([this] { form.show(hand.window(), hand.window()); }, steps);
  }
  void fill(bool all, int before, int after) { form.ini_frmProximity(all, before, after); }
  void click_arrow(int index, bool up) {
    RECT area;
    GetClientRect(form.Picture1[index].arrows().handle(), &area);
    const LPARAM place = MAKELPARAM(area.right / 2, up ? area.bottom / 4 : area.bottom * 3 / 4);
    SendMessageW(form.Picture1[index].arrows().handle(), WM_LBUTTONDOWN, MK_LBUTTON, place);
    SendMessageW(form.Picture1[index].arrows().handle(), WM_LBUTTONUP, 0, place);
  }

  Hand hand;
  frmProximity form{hand.window()};
};

TEST_F(ProximityTest, ShowsFittedValuesInTabOrder) {
  bool all = true;
  int before = -7;
  int after = 5000;
  form.ini_frmProximity(all, before, after);
  EXPECT_EQ(form.Picture1[0].text(), "0");
  EXPECT_EQ(form.Picture1[1].text(), "1000");
  EXPECT_TRUE(form.Option1[1].selected());
  EXPECT_EQ(form.Label2.text(), "The fisrt word in your criteria matches when");
  EXPECT_EQ(form.Label3.text(), "Limit search to a range of characters .");
  EXPECT_EQ(tab_order(form.handle(), form.Picture1[0].handle()),
            (std::vector<int>{IDC_PROX_PICTURE, IDC_PROX_PICTURE + 1, IDC_PROX_OPTION + 1, IDOK,
                              IDCANCEL, IDC_PROX_DEFAULT}));
}

TEST_F(ProximityTest, ArrowsKeysAndDigitsChangeTheFocusedCount) {
  fill(false, 100, 995);
  open({[&] {
          EXPECT_TRUE(form.Picture1[0].has_focus());
          click_arrow(0, true);
          EXPECT_EQ(form.prox_before(), 110);
          click_arrow(1, true);
          EXPECT_EQ(form.prox_after(), 1000);
          EXPECT_TRUE(form.Picture1[1].has_focus());
          press(form.Picture1[1], VK_NEXT);
          press(form.Picture1[1], VK_DOWN);
        },
        [&] {
          EXPECT_EQ(form.Picture1[1].text(), "899");
          EXPECT_EQ(form.Picture1[1].arrows().position(), 899);
          type(form.Picture1[1], "25x\b");
          EXPECT_EQ(form.Picture1[1].text(), "2");
          SendMessageW(form.Label1[0].handle(), WM_LBUTTONDOWN, MK_LBUTTON, 0);
          EXPECT_TRUE(form.Picture1[0].has_focus());
          SetWindowTextW(form.Picture1[0].handle(), L"7000");
          press(form.Picture1[0], VK_RETURN);
        }});
  EXPECT_EQ(form.prox_before(), 1000);
  EXPECT_EQ(form.prox_after(), 2);
}

TEST_F(ProximityTest, RefusesAPairOfZeros) {
  fill(false, 10, 110);
  open({[&] {
          form.Picture1[0].set_value(0);
          form.Picture1[1].set_value(0);
          form.cmdOK.click();
        },
        [&] {
          EXPECT_EQ(answer_box(L"Tallowmere 32"), "Only one value can be set to zero, not both.");
        },
        [&] {
          EXPECT_TRUE(IsWindowVisible(form.handle()));
          form.Picture1[1].set_value(110);
          form.cmdOK.click();
        }});
  EXPECT_EQ(form.prox_before(), 0);
  EXPECT_EQ(form.prox_after(), 110);
}

TEST_F(ProximityTest, CancelRestoresAndResetKeepsTheOption) {
  fill(false, 30, 40);
  open({[&] {
    form.Option1[1].click();
    EXPECT_EQ(form.Label6.text(), "that follow it also match within the range set above.");
    form.cmdDefault.click();
    EXPECT_EQ(form.prox_before(), 110);
    EXPECT_TRUE(form.prox_all());
    press(form.Picture1[0], VK_ESCAPE);
  }});
  EXPECT_EQ(form.prox_before(), 30);
  EXPECT_FALSE(form.prox_all());
  EXPECT_EQ(form.Label6.text(), "that follows it also matches within the range set above.");
}

}  // namespace
}  // namespace tallowmere
