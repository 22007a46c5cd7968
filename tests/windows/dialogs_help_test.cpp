#include "dialogs/frmHints.h"
#include "dialogs/frmQTips.h"
#include "dialogs/resource.h"
#include "tests/windows/dialogs_support.h"

namespace tallowmere {
namespace {

RECT place_of(const win32::Control& control) {
  RECT place;
  GetWindowRect(control.handle(), &place);
  return place;
}

TEST(HelpTest, MouseAndKeysOpenAndCloseAnswers) {
  Hand hand;
  frmQTips form(hand.window());
  const auto answer = [&] { return form.lblPopup.visible() ? form.lblPopup.text() : "(none)"; };
  hand.show(form, {[&] {
                     for (const HWND target : {form.lblPopup.handle(), form.handle()}) {
                       form.Label1[2].click();
                       EXPECT_NE(answer().find(".wav"), std::string::npos);
                       press_mouse(win32::Control(target));
                       EXPECT_EQ(answer(), "(none)");
                     }
                     form.Label1[0].focus();
                     press(form.Label1[0], VK_TAB);
                   },
                   [&] { press(win32::Control(GetFocus()), VK_RETURN); },
                   [&] {
                     EXPECT_NE(answer().find("Minimize On"), std::string::npos);
                     press(form.Label1[1], VK_DOWN);
                   },
                   [&] { press(win32::Control(GetFocus()), VK_SPACE); },
                   [&] {
                     EXPECT_NE(answer().find(".wav"), std::string::npos);
                     PostMessageW(form.handle(), WM_CLOSE, 0, 0);
                   }});
  EXPECT_FALSE(form.lblPopup.visible() || form.visited(3));
  EXPECT_TRUE(form.visited(1) && form.visited(2));
}

TEST(HelpTest, EveryAnswerIsWholeAndBesideTheTopics) {
  Hand hand;
  frmQTips answers(hand.window());
  frmHints hints(hand.window());
  frmExamples examples(hand.window());
  for (HelpScreen* form : std::initializer_list<HelpScreen*>{&answers, &hints, &examples}) {
    hand.show(*form, {[&] {
      RECT client;
      GetClientRect(form->handle(), &client);
      MapWindowPoints(form->handle(), nullptr, reinterpret_cast<POINT*>(&client), 2);
      RECT margin{0, 0, 5, 5};
      MapDialogRect(form->handle(), &margin);
      for (const win32::Button& topic : form->topics()) {
        if (topic.text() == "Examples") continue;
        topic.click();
        const RECT popup = place_of(form->lblPopup);
        const LONG width = popup.right - popup.left - 2 * margin.right;
        const SIZE text =
            MeasuringCanvas(form->lblPopup.handle()).text_size(form->lblPopup.text(), width);
        EXPECT_LE(text.cx, width);
        EXPECT_LE(text.cy, popup.bottom - popup.top - 2 * margin.bottom);
        EXPECT_GE(popup.left, place_of(topic).right);
        EXPECT_GE(popup.top, client.top);
        EXPECT_LE(popup.right, client.right);
        EXPECT_LT(popup.bottom, place_of(form->Command1).top);
      }
      form->Command1.click();
    }});
    EXPECT_EQ(tab_order(form->handle(), form->topics().front().handle()).back(), IDC_HELP_EXIT);
  }
}

}  // namespace
}  // namespace tallowmere
