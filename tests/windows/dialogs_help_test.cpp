#include "dialogs/frmAbout.h"
#include "dialogs/frmHints.h"
#include "dialogs/frmQTips.h"
#include "tests/windows/dialogs_support.h"

namespace tallowmere {
namespace {

/// Where a control is in its form.
RECT place_of(const win32::Control& control) {
  RECT place;
  GetWindowRect(control.handle(), &place);
  MapWindowPoints(nullptr, GetParent(control.handle()), reinterpret_cast<POINT*>(&place), 2);
  return place;
}

TEST(HelpTest, MouseAndKeysOpenAndCloseAnswers) {
  Hand hand;
  frmQTips form(hand.window());
  const auto answer = [&] { return form.lblPopup.visible() ? form.lblPopup.text() : "(none)"; };
  const auto press_focused = [](WPARAM key) { press(win32::Control(GetFocus()), key); };
  hand.show(form, {[&] {
                     for (const HWND target : {form.lblPopup.handle(), form.handle()}) {
                       form.Label1[2].click();
                       EXPECT_NE(answer().find(".wav"), std::string::npos);
                       press_mouse(win32::Control(target));
                       EXPECT_EQ(answer(), "(none)");
                     }
                     form.Label1[0].focus();
                     press_focused(VK_TAB);
                   },
                   [&] { press_focused(VK_RETURN); },
                   [&] {
                     EXPECT_NE(answer().find("Minimize On"), std::string::npos);
                     press_focused(VK_DOWN);
                   },
                   [&] { press_focused(VK_SPACE); },
                   [&] {
                     EXPECT_NE(answer().find(".wav"), std::string::npos);
                     PostMessageW(form.handle(), WM_CLOSE, 0, 0);
                   }});
  EXPECT_TRUE(form.visited(1) && form.visited(2) && !form.visited(3) && !form.lblPopup.visible());
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
      RECT margin{0, 0, 5, 5};
      MapDialogRect(form->handle(), &margin);
      for (const win32::Button& topic : form->topics()) {
        if (topic.text() == "Examples") continue;
        topic.click();
        const RECT popup = place_of(form->lblPopup);
        const LONG width = popup.right - popup.left - 2 * margin.right;
        const SIZE text =
            MeasuringCanvas(form->lblPopup.handle()).text_size(form->lblPopup.text(), width);
        EXPECT_TRUE(text.cx <= width && text.cy <= popup.bottom - popup.top - 2 * margin.bottom);
        EXPECT_TRUE(popup.left >= place_of(topic).right && popup.right <= client.right);
        EXPECT_TRUE(popup.top >= 0 && popup.bottom < place_of(form->Command1).top);
      }
      form->Command1.click();
    }});
  }
}

TEST(AboutTest, TheTitleIsBoldAfterTheSystemHasFittedTheFontsToAScreen) {
  Hand hand;
  frmAbout form(hand.window());
  const win32::Font plain("Tahoma", 30, 96);
  form.Label1.set_font(plain.handle());
  SendMessageW(form.handle(), WM_DPICHANGED, MAKEWPARAM(300, 300), 0);
  hand.work([&] { form.show(hand.window()); }, {[&] { form.Command1.click(); }});
  EXPECT_EQ(font_of(form.Label1).lfWeight, FW_BOLD);
}

}  // namespace
}  // namespace tallowmere
