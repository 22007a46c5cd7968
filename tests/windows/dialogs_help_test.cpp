#include "dialogs/frmAbout.h"
#include "dialogs/frmHints.h"
#include "dialogs/frmQTips.h"
#include "dialogs/resource.h"
#include "help/help_pages.h"
#include "tests/windows/dialogs_support.h"
#include "tests/windows/picture.h"
#include "win32/message_loop.h"

namespace tallowmere {
namespace {

RECT place_of(const win32::Control& control) {
  RECT place;
  GetWindowRect(control.handle(), &place);
  return place;
}

void click(HWND window) {
  SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
  SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
}

/// The pointer after the mouse has moved over the control, or over the form itself.
HCURSOR pointer_over(HWND window) {
  SetCursor(LoadCursorW(nullptr, IDC_WAIT));
  SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window),
               MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
  return GetCursor();
}

std::vector<std::string> texts(const std::vector<win32::Button>& controls) {
  std::vector<std::string> result;
  for (const win32::Button& control : controls) result.push_back(control.text());
  return result;
}

TEST(HelpTest, TopicsStandInTheirOrder) {
  Hand hand;
  const frmQTips answers(hand.window());
  EXPECT_EQ(texts(answers.Label1),
            (std::vector<std::string>{
                "What is hypertangent infosurfing?", "What's the big deal about multitasking?",
                "Can I view files that do not contain any text, like picture files?",
                "How do I search an entire disk?",
                "Can I find and view a file without searching its contents?",
                "Are there any secret shortcuts?", "Can I edit or modify the file being viewed?",
                "Can I change the font used to display the file's contents?",
                "What does \"Minimize On\" do?", "What does \"Find on Launch\" do?",
                "What can be placed onto the clipboard?",
                "What is the difference between \"Delete\" and \"Remove\" a file?"}));
  const frmHints hints(hand.window());
  EXPECT_EQ(texts(hints.lblHypertext),
            (std::vector<std::string>{"Logical AND Search", "Logical OR Search",
                                      "Single PHRASE Search", "Proximity NEAR Search",
                                      "Combination Searches", "words", "phrases", "Examples"}));
  const frmExamples examples(hand.window());
  EXPECT_EQ(examples.lblExample[0].text(), "Find:   software release upgrade");
  EXPECT_EQ(examples.lblExample[1].text(), "Find:   \"essential utility\" fast \"search engine\"");
}

TEST(HelpTest, AnswersOpenBesideTheirTopicsAndClose) {
  Hand hand;
  frmQTips form(hand.window());
  hand.work([&] { form.show(hand.window(), hand.window()); },
            {[&] {
               EXPECT_EQ(win32::Control(form.handle()).text(), "Quick Answers");
               EXPECT_TRUE(form.Label1[0].has_focus());
               EXPECT_FALSE(form.lblPopup.visible() || form.visited(1));
               form.Label1[1].click();
               EXPECT_TRUE(form.lblPopup.visible() && form.visited(1));
               EXPECT_FALSE(form.visited(2));
               EXPECT_NE(form.lblPopup.text().find("Minimize On"), std::string::npos);
               click(form.lblPopup.handle());
               EXPECT_FALSE(form.lblPopup.visible());
               form.Label1[2].click();
               EXPECT_NE(form.lblPopup.text().find(".wav"), std::string::npos);
               click(form.handle());
               EXPECT_FALSE(form.lblPopup.visible());
               form.Label1[0].focus();
               press(form.Label1[0], VK_TAB);
             },
             [&] {
               EXPECT_TRUE(form.Label1[1].has_focus());
               press(form.Label1[1], VK_RETURN);
             },
             [&] {
               EXPECT_TRUE(form.lblPopup.visible());
               press(form.Label1[1], VK_DOWN);
             },
             [&] { press(form.Label1[2], VK_SPACE); },
             [&] {
               EXPECT_NE(form.lblPopup.text().find(".wav"), std::string::npos);
               press(form.Label1[2], VK_ESCAPE);
             },
             [&] {
               EXPECT_FALSE(form.lblPopup.visible());
               press(form.Label1[2], VK_ESCAPE);
             }});
  hand.work([&] { form.show(hand.window(), hand.window()); }, {[&] {
              EXPECT_TRUE(form.visited(1));
              form.Label1[1].click();
              PostMessageW(form.handle(), WM_CLOSE, 0, 0);
            }});
}

TEST(HelpTest, EveryAnswerIsWholeAndBesideTheTopics) {
  Hand hand;
  frmQTips answers(hand.window());
  frmHints hints(hand.window());
  frmExamples examples(hand.window());
  for (HelpScreen* form : std::initializer_list<HelpScreen*>{&answers, &hints, &examples}) {
    hand.work(
        [&] { form->show(hand.window(), hand.window()); }, {[&] {
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

TEST(HelpTest, ALinksLineIsAsLongAsItsText) {
  Hand hand;
  frmQTips form(hand.window());
  hand.work([&] { form.show(hand.window(), hand.window()); }, {[&] {
              // The second topic has one line and not the focus.
              const Picture picture = picture_of(form.Label1[1].handle());
              const auto inked = [&](int x) {
                int count = 0;
                for (int y = 0; y < picture.height; ++y) {
                  count += picture.at(x, y) != picture.at(0, 0);
                }
                return count;
              };
              int line_end = picture.width - 1;
              while (line_end > 0 && inked(line_end) == 0) --line_end;
              int text_end = line_end;
              while (text_end > 0 && inked(text_end) < 3) --text_end;
              EXPECT_LE(line_end - text_end, 3) << text_end;
              EXPECT_LE(picture.width - line_end, 4);
              form.Command1.click();
            }});
}

TEST(HelpTest, PointerOfALinkIsTheUpArrow) {
  Hand hand;
  frmQTips form(hand.window());
  const HCURSOR link = LoadCursorW(nullptr, IDC_UPARROW);
  EXPECT_EQ(pointer_over(form.Label1[3].handle()), link);
  EXPECT_NE(pointer_over(form.handle()), link);
  EXPECT_NE(pointer_over(form.lblPopup.handle()), link);
}

TEST(HelpTest, HintsOpenTheExamples) {
  Hand hand;
  frmHints form(hand.window());
  hand.work([&] { form.show(hand.window(), hand.window()); },
            {[&] {
               EXPECT_EQ(form.lblExamples.text(), "Examples");
               form.lblHypertext[5].click();
               form.lblExamples.focus();
               press(form.lblExamples, VK_RETURN);
             },
             [&] {
               EXPECT_FALSE(form.lblPopup.visible());
               EXPECT_FALSE(IsWindowEnabled(form.handle()));
               form.examples().lblExample[0].click();
               EXPECT_NE(form.examples().lblPopup.text(), "");
               form.examples().Command1.click();
             },
             [&] {
               EXPECT_TRUE(form.visited(7) && form.lblExamples.has_focus());
               form.Command1.click();
             }});
}

TEST(HelpTest, AboutShowsNameAndVersion) {
  Hand hand;
  frmAbout form(hand.window());
  hand.work([&] { form.show(hand.window()); }, {[&] {
              EXPECT_EQ(form.Label1.text(), about_title);
              // On a screen of another DPI the system gives every control the form's font.
              form.Label1.set_font(
                  reinterpret_cast<HFONT>(SendMessageW(form.handle(), WM_GETFONT, 0, 0)));
              RECT place{0, 0, 400, 200};
              SendMessageW(form.handle(), WM_DPICHANGED, MAKEWPARAM(144, 144),
                           reinterpret_cast<LPARAM>(&place));
              win32::pump_pending();
              LOGFONTW font{};
              GetObjectW(
                  reinterpret_cast<HFONT>(SendMessageW(form.Label1.handle(), WM_GETFONT, 0, 0)),
                  sizeof font, &font);
              EXPECT_EQ(font.lfWeight, FW_BOLD);
              press(form.Command1, VK_ESCAPE);
            }});
}

}  // namespace
}  // namespace tallowmere
