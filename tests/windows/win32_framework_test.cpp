#include <gtest/gtest.h>

#include "app/resource.h"
#include "dialogs/resource.h"
#include "shell/lenient_values.h"
#include "win32/controls.h"
#include "win32/dialog_template.h"
#include "win32/dpi.h"
#include "win32/fonts.h"
#include "win32/form.h"
#include "win32/message_loop.h"
#include "win32/text.h"
#include "win32/tooltip.h"
#include "win32/user_locale.h"

namespace tallowmere::win32 {
namespace {

std::span<const std::byte> resource(int id) {
  const HRSRC found = FindResourceW(nullptr, MAKEINTRESOURCEW(id), RT_DIALOG);
  return {static_cast<const std::byte*>(LockResource(LoadResource(nullptr, found))),
          SizeofResource(nullptr, found)};
}

bool holds(const std::vector<std::byte>& bytes, const std::wstring& text) {
  const std::string_view all(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const std::string_view part(reinterpret_cast<const char*>(text.data()),
                              text.size() * sizeof(wchar_t));
  return all.find(part) != std::string_view::npos;
}

TEST(DialogTemplate, TakesAnotherFontAndKeepsItsControls) {
  for (const int id : {IDD_FORM1, IDD_NARROW, IDD_SEARCH_FOR}) {
    for (const wchar_t* face : {L"A", L"An odd face", L"A rather long name of a face"}) {
      const std::vector<std::byte> changed = with_font(resource(id), {face, 13});
      ASSERT_FALSE(changed.empty());
      EXPECT_TRUE(holds(changed, face));
      EXPECT_FALSE(holds(changed, L"MS Shell Dlg"));
      const HWND dialog = CreateDialogIndirectParamW(
          GetModuleHandleW(nullptr), reinterpret_cast<const DLGTEMPLATE*>(changed.data()),
          GetDesktopWindow(), nullptr, 0);
      if (id == IDD_NARROW) {
        EXPECT_EQ(Control(GetDlgItem(dialog, IDOK)).text(), "OK");
      }
      if (dialog != nullptr) DestroyWindow(dialog);
    }
  }
}

TEST(DialogTemplate, CutShortIsRefused) {
  const std::span<const std::byte> whole = resource(IDD_NARROW);
  for (std::size_t length = 0; length < 60; ++length) {
    const std::vector<std::byte> copy = with_font(whole.first(length), {L"Face", 9});
    EXPECT_TRUE(copy.empty() || copy.size() == length) << length;
  }
}

/// A dialog of the program without its code.
class PlainForm : public Form {
 public:
  explicit PlainForm(HWND owner) : Form(IDD_NARROW, owner) {
    clicked(IDOK, [this] {
      ++accepted;
      hide();
    });
  }
  int accepted = 0;

 protected:
  void on_shown() override {
    for (int click = 0; click < 2; ++click) PostMessageW(handle(), WM_COMMAND, IDOK, 0);
  }
};

TEST(Form, IsShownModallyAgainAndAgain) {
  PlainForm owner(nullptr);
  PlainForm form(owner.handle());
  for (int round = 1; round <= 2; ++round) {
    form.show_modal(owner.handle());
    pump_pending();  // the second click comes to a hidden form
    EXPECT_EQ(form.accepted, round);
    EXPECT_FALSE(IsWindowVisible(form.handle()));
    EXPECT_TRUE(IsWindowEnabled(owner.handle()));
  }
}

TEST(Form, AFormOverAnotherShowsTheSameIcon) {
  PlainForm owner(nullptr);
  const HICON icon = LoadIconW(nullptr, IDI_WARNING);
  SendMessageW(owner.handle(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon));
  const PlainForm form(owner.handle());
  const PlainForm inner(form.handle());
  EXPECT_EQ(SendMessageW(inner.handle(), WM_GETICON, ICON_SMALL, 0),
            reinterpret_cast<LRESULT>(icon));
}

TEST(Form, TheProgramsEndEndsAModalForm) {
  PlainForm owner(nullptr);
  PlainForm form(owner.handle());
  PostQuitMessage(7);
  form.show_modal(owner.handle());
  EXPECT_TRUE(IsWindowEnabled(owner.handle()));
  MSG message;
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7u);
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
  }
}

/// Grows with the DPI, as the system would make it, and counts what its button hears.
class GrowingForm : public PlainForm {
 public:
  explicit GrowingForm(HWND owner) : PlainForm(owner) {
    SetWindowSubclass(item(IDOK), &GrowingForm::button_proc, 0, reinterpret_cast<DWORD_PTR>(this));
  }
  std::string changes;
  RECT shown{};  ///< where it stood the first time
  int colors_heard = 0;

 protected:
  void on_dpi_changed(int before, int now) override {
    changes += std::to_string(before) + ">" + std::to_string(now) + " ";
    SetWindowPos(handle(), nullptr, 0, 0, 500, 300, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  void on_shown() override {
    if (shown.right == 0) GetWindowRect(handle(), &shown);
    PlainForm::on_shown();
  }

 private:
  static LRESULT CALLBACK button_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                      UINT_PTR, DWORD_PTR form) {
    const bool counts = message == WM_SYSCOLORCHANGE || message == WM_THEMECHANGED;
    if (counts) ++reinterpret_cast<GrowingForm*>(form)->colors_heard;
    return DefSubclassProc(window, message, wparam, lparam);
  }
};

TEST(Form, AHiddenFormFollowsItsScreensDpiBeforeItIsCentred) {
  PlainForm owner(nullptr);
  SetWindowPos(owner.handle(), nullptr, 100, 50, 600, 400, SWP_NOZORDER | SWP_NOACTIVATE);
  GrowingForm form(owner.handle());
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

TEST(Form, ControlsHearOfNewColors) {
  PlainForm owner(nullptr);
  GrowingForm form(owner.handle());
  SendMessageW(form.handle(), WM_SYSCOLORCHANGE, 0, 0);
  SendMessageW(form.handle(), WM_THEMECHANGED, 0, 0);
  EXPECT_EQ(form.colors_heard, 2);
}

TEST(ToolTip, StaysAsLongAsTheSystemAllows) {
  const PlainForm form(nullptr);
  const ToolTip tips(form.handle());
  const HWND window = FindWindowExW(nullptr, nullptr, TOOLTIPS_CLASSW, nullptr);
  ASSERT_EQ(GetWindow(window, GW_OWNER), form.handle());
  EXPECT_EQ(SendMessageW(window, TTM_GETDELAYTIME, TTDT_AUTOPOP, 0), 32767);
}

TEST(Controls, CarryTextsOfAnyLengthAndScript) {
  const Label label(CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), nullptr));
  std::string text;
  for (int i = 0; i < 40'000; ++i) text += "é中😀x";
  label.set_text(text);
  EXPECT_EQ(label.text(), text);
  DestroyWindow(label.handle());
}

TEST(Fonts, AbsurdFontsAreRefused) {
  EXPECT_TRUE(Font("Courier New", 10.5, 96));
  EXPECT_FALSE(Font("", 10, 96));
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
