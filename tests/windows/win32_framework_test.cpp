#include <gtest/gtest.h>

#include "dialogs/resource.h"
#include "shell/lenient_values.h"
#include "win32/controls.h"
#include "win32/dialog_template.h"
#include "win32/dpi.h"
#include "win32/fonts.h"
#include "win32/form.h"
#include "win32/message_loop.h"
#include "win32/text.h"
#include "win32/user_locale.h"

namespace tallowmere::win32 {
namespace {

TEST(DialogTemplate, TakesAFontOfAnyLengthAndKeepsItsControls) {
  const HRSRC found = FindResourceW(nullptr, MAKEINTRESOURCEW(IDD_NARROW), RT_DIALOG);
  const std::span source(static_cast<const std::byte*>(LockResource(LoadResource(nullptr, found))),
                         SizeofResource(nullptr, found));
  for (const std::wstring face : {L"A", L"An odd face", L"A rather long name of a face"}) {
    const std::vector<std::byte> changed = with_font(source, {face, 13});
    const std::wstring units(reinterpret_cast<const wchar_t*>(changed.data()),
                             changed.size() / sizeof(wchar_t));
    EXPECT_NE(units.find(face), std::wstring::npos);
    const HWND dialog = CreateDialogIndirectParamW(
        GetModuleHandleW(nullptr), reinterpret_cast<const DLGTEMPLATE*>(changed.data()),
        GetDesktopWindow(), nullptr, 0);
    EXPECT_EQ(Control(GetDlgItem(dialog, IDOK)).text(), "OK");
    DestroyWindow(dialog);
  }
}

/// A dialog of the program without its code. It grows with the DPI, as the system would make it.
class PlainForm : public Form {
 public:
  explicit PlainForm(HWND owner) : Form(IDD_NARROW, owner) {
    clicked(IDOK, [this] {
      ++accepted;
      hide();
    });
  }
  int clicks = 2;  ///< on OK, one after the other
  int accepted = 0;
  std::string changes;
  RECT shown{};  ///< where it was the first time

 protected:
  void on_shown() override {
    if (shown.right == 0) GetWindowRect(handle(), &shown);
    for (int click = 0; click < clicks; ++click) PostMessageW(handle(), WM_COMMAND, IDOK, 0);
  }
  void on_dpi_changed(int before, int now) override {
    changes += std::to_string(before) + ">" + std::to_string(now) + " ";
    SetWindowPos(handle(), nullptr, 0, 0, 500, 300, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
};

class FormTest : public testing::Test {
 protected:
  PlainForm owner{nullptr};
  PlainForm form{owner.handle()};
};

TEST_F(FormTest, IsShownModallyAgainAndAgain) {
  for (int round = 1; round <= 2; ++round) {
    form.show_modal(owner.handle());
    pump_pending();  // the second click comes to a hidden form
    EXPECT_EQ(form.accepted, round);
    EXPECT_FALSE(IsWindowVisible(form.handle()));
    EXPECT_TRUE(IsWindowEnabled(owner.handle()));
  }
}

TEST_F(FormTest, TheProgramsEndEndsAModalForm) {
  form.clicks = 0;
  PostQuitMessage(7);
  form.show_modal(owner.handle());
  EXPECT_TRUE(IsWindowEnabled(owner.handle()));
  MSG message;
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7u);
  pump_pending();
}

TEST_F(FormTest, AHiddenFormFollowsItsScreensDpiBeforeItIsCentred) {
  SetWindowPos(owner.handle(), nullptr, 100, 50, 600, 400, SWP_NOZORDER | SWP_NOACTIVATE);
  const int dpi = window_dpi(form.handle());
  RECT proposed{0, 0, 300, 200};
  SendMessageW(form.handle(), WM_DPICHANGED, MAKEWPARAM(2 * dpi, 2 * dpi),
               reinterpret_cast<LPARAM>(&proposed));
  form.show_modal(owner.handle());
  form.show_modal(owner.handle());
  EXPECT_EQ(form.changes, std::to_string(dpi) + ">" + std::to_string(2 * dpi) + " ");
  EXPECT_EQ(form.shown.left, 150);
  EXPECT_EQ(form.shown.top, 100);
}

TEST(Fonts, AbsurdFontsAreRefused) {
  EXPECT_TRUE(Font("Courier New", 10.5, 96));
  EXPECT_FALSE(Font(std::string(40, 'f'), 10, 96));
  EXPECT_FALSE(Font("Courier New", 1e300, 96));
}

TEST(UserLocale, ShortDatesAreReadBackInTheirOrder) {
  Date read;
  ASSERT_TRUE(lenient_date(short_date({2023, 11, 4}), short_date_order(), read));
  EXPECT_EQ(read, (Date{2023, 11, 4}));
  EXPECT_EQ(short_date({1, 1, 1}), "") << "the system writes no dates before 1601";
}

}  // namespace
}  // namespace tallowmere::win32
