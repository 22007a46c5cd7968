#include "dialogs/frmNarrow.h"

#include "tests/windows/dialogs_support.h"
#include "tests/windows/picture.h"

namespace tallowmere {
namespace {

class NarrowTest : public testing::Test {
 protected:
  bool ask(int list2_index, bool file_selectable, Hand::Step step) {
    bool accepted = false;
    hand.work([&] { accepted = form.ask(kind, list2_index, file_selectable); }, {std::move(step)});
    EXPECT_EQ(cancelled, !accepted);
    return accepted;
  }

  Hand hand;
  bool cancelled = false;
  SearchKind kind = SearchKind::list_search;
  frmNarrow form{hand.window(), cancelled};
};

TEST_F(NarrowTest, ShowsTheAnswersAndKeepsTheChoice) {
  EXPECT_TRUE(ask(0, true, [&] {
    EXPECT_EQ(form.Label1[2].text(), "Yes, search file being viewed.");
    EXPECT_EQ(form.Option1[2].text(), "Yes, search file being viewed.");  // to be read aloud
    EXPECT_TRUE(form.Option1[1].selected() && form.Option1[1].has_focus());
    SendMessageW(form.Label1[2].handle(), WM_LBUTTONDOWN, MK_LBUTTON, 0);
    EXPECT_TRUE(form.Option1[2].selected());
    EXPECT_FALSE(form.Option1[1].selected());
    press(form.Option1[2], VK_RETURN);
  }));
  EXPECT_EQ(kind, SearchKind::file_search);
  EXPECT_FALSE(ask(3, true, [&] {
    EXPECT_EQ(form.Label1[2].text(), "Yes, search the selected file.");
    form.Option1[0].focus();
    form.Option1[0].click();
    form.move_focus(form.Command2.handle());
    press(form.Command2, VK_RETURN);
  }));
  EXPECT_EQ(kind, SearchKind::file_search);
  // Neither the option that had the focus last nor the button pressed last counts any more.
  kind = SearchKind::list_search;
  EXPECT_TRUE(ask(3, true, [&] { press(form.Option1[1], VK_RETURN); }));
  EXPECT_EQ(kind, SearchKind::list_search);
}

TEST_F(NarrowTest, ADoubleClickAcceptsAtOnce) {
  for (const win32::Control& target : {win32::Control(form.Label1[0]), {form.Option1[1]}}) {
    EXPECT_TRUE(ask(1, true, [&] {
      SendMessageW(target.handle(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 5));
    }));
    EXPECT_EQ(kind, target.handle() == form.Label1[0].handle() ? SearchKind::new_search
                                                               : SearchKind::list_search);
  }
}

/// As before the first key on Windows; Wine always shows the focus.
LRESULT CALLBACK hide_focus(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                            DWORD_PTR) {
  if (message == WM_QUERYUISTATE) return UISF_HIDEFOCUS;
  return DefSubclassProc(window, message, wparam, lparam);
}

TEST_F(NarrowTest, TheLabelShowsTheFocusOfItsOption) {
  ask(1, true, [&] {
    const HWND label = form.Label1[0].handle();
    const HWND option = form.Option1[0].handle();
    const Picture without = picture_of(label);
    form.Option1[0].focus();
    EXPECT_FALSE(picture_of(label) == without);
    SetWindowSubclass(option, &hide_focus, 0, 0);
    SendMessageW(option, WM_UPDATEUISTATE, MAKEWPARAM(UIS_SET, UISF_HIDEFOCUS), 0);
    EXPECT_TRUE(picture_of(label) == without);
    RemoveWindowSubclass(option, &hide_focus, 0);
    form.Option1[1].focus();
    EXPECT_TRUE(picture_of(label) == without);
    form.Option1[0].focus();
    EXPECT_FALSE(picture_of(label) == without);
    form.Command2.click();
  });
}

TEST_F(NarrowTest, WithoutASelectedFileThereIsNoFileSearch) {
  kind = SearchKind::file_search;
  EXPECT_TRUE(ask(-1, false, [&] {
    EXPECT_FALSE(form.Option1[2].enabled());
    form.Command1.click();
  }));
  EXPECT_EQ(kind, SearchKind::new_search);
}

}  // namespace
}  // namespace tallowmere
