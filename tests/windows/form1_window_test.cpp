#include "tests/windows/dialogs_support.h"
#include "tests/windows/form1_fixture.h"
#include "win32/dpi.h"
#include "win32/registry.h"

namespace tallowmere {
namespace {

class Form1WindowTest : public Form1Test {};

RECT place_of(HWND window) {
  RECT place;
  GetWindowRect(window, &place);
  return place;
}

/// Settings in the registry, under a key that only these tests know.
class Form1SettingsTest : public Form1WindowTest {
 protected:
  Form1SettingsTest() : store(path) { RegDeleteTreeW(HKEY_CURRENT_USER, path); }
  ~Form1SettingsTest() override {
    form.reset();
    RegDeleteTreeW(HKEY_CURRENT_USER, path);
  }

  static constexpr wchar_t path[] = L"Software\\Tallowmere\\Tests";
  win32::RegistrySettings store;
};

TEST_F(Form1WindowTest, ColumnsFitIntoTheListAndTheWindowKeepsItsLeastSize) {
  open();
  int columns = 0;
  for (int i = 0; i < result_columns; ++i) columns += form->ListView2.column_width(i);
  const RECT list = place_of(form->ListView2.handle());
  EXPECT_LT(columns, list.right - list.left) << "a sideways scroll bar";
  EXPECT_GT(columns, list.right - list.left - 50);

  SetWindowPos(form->handle(), nullptr, 0, 0, 10, 10, SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_GT(place_of(form->handle()).right - place_of(form->handle()).left, 500);
  EXPECT_EQ(label_of(form->Text1), "Text of the file") << "to be read aloud";
}

TEST_F(Form1WindowTest, AColumnKeepsTheUsersWidthOnAnotherScreen) {
  open();
  form->ListView2.set_column_width(0, 100);
  RECT proposed{0, 0, 900, 600};
  SendMessageW(form->handle(), WM_DPICHANGED, MAKEWPARAM(144, 144),
               reinterpret_cast<LPARAM>(&proposed));
  win32::pump_pending();
  EXPECT_EQ(form->ListView2.column_width(0), 100 * 144 / win32::window_dpi(form->handle()));
}

TEST_F(Form1WindowTest, ColumnsStayAsTheUserLeftThem) {
  const auto widths = [this] {
    std::string text;
    for (int i = 0; i < result_columns; ++i) {
      text += std::to_string(form->ListView2.column_width(i)) + " ";
    }
    return text;
  };
  const auto widen_window = [this](int width) {
    SetWindowPos(form->handle(), nullptr, 0, 0, width, 600, SWP_NOMOVE | SWP_NOZORDER);
  };
  open();
  const std::string designed = widths();
  form->ListView2.set_column_width(1, 97);
  widen_window(800);
  const int last = form->ListView2.column_width(3);
  widen_window(900);
  EXPECT_EQ(form->ListView2.column_width(3), last + 100) << "it fills what is left";
  form->ListView2.set_column_width(3, 301);
  form->ListView2.set_column_width(0, 0);
  for (const bool again : {false, true}) {
    if (again) choose(ID_MNUEXIT);
    if (again) start(settings);
    widen_window(700);
    EXPECT_EQ(widths(), "0 97 85 301 ");
  }
  widen_window(680);
  form->show(SW_SHOW);
  const RECT list = place_of(form->ListView2.handle());
  POINT edge{list.left + 50, list.bottom + 1};
  ScreenToClient(form->handle(), &edge);
  SendMessageW(form->handle(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(edge.x, edge.y));
  EXPECT_EQ(widths(), designed);
}

TEST_F(Form1WindowTest, TheListsLowerEdgeIsDraggedAndGoesBack) {
  open();
  form->show(SW_SHOW);
  const auto height = [this] {
    const RECT list = place_of(form->ListView2.handle());
    return list.bottom - list.top;
  };
  const auto mouse = [this](UINT message, LONG below_edge) {
    const RECT list = place_of(form->ListView2.handle());
    POINT at{(list.left + list.right) / 2, list.bottom + below_edge};
    ScreenToClient(form->handle(), &at);
    SendMessageW(form->handle(), message, MK_LBUTTON, MAKELPARAM(at.x, at.y));
  };
  const auto lets_through = [this](const win32::Control& control, bool bottom, LONG below) {
    const RECT place = place_of(control.handle());
    const LPARAM at = MAKELPARAM(place.left + 50, (bottom ? place.bottom : place.top) + below);
    return SendMessageW(control.handle(), WM_NCHITTEST, 0, at) == HTTRANSPARENT;
  };
  EXPECT_TRUE(lets_through(form->ListView2, true, -1) && lets_through(form->Label1, false, 1));
  EXPECT_FALSE(lets_through(form->ListView2, true, -8) || lets_through(form->Label1, false, 8));

  const LONG before = height();
  mouse(WM_LBUTTONDOWN, 1);
  mouse(WM_MOUSEMOVE, 1);
  mouse(WM_LBUTTONUP, 1);
  mouse(WM_MOUSEMOVE, 40);
  EXPECT_EQ(height(), before);
  choose(ID_MNUEXIT);
  EXPECT_EQ(settings.get_setting("list_share"), "0") << "a click is no wish";

  start(settings);
  form->show(SW_SHOW);
  mouse(WM_LBUTTONDOWN, 1);
  for (const LONG way : {30, -10, 21}) mouse(WM_MOUSEMOVE, 1 + way);
  mouse(WM_LBUTTONUP, 1);
  EXPECT_EQ(height(), before + 41);
  EXPECT_LT(place_of(form->ListView2.handle()).bottom, place_of(form->Label1.handle()).top);
  choose(ID_MNUEXIT);
  start(settings);
  EXPECT_EQ(height(), before + 41);
  mouse(WM_LBUTTONDBLCLK, 30);
  EXPECT_EQ(height(), before + 41);
  mouse(WM_LBUTTONDBLCLK, 1);
  EXPECT_EQ(height(), before);
}

TEST_F(Form1WindowTest, NothingRunsBehindADialog) {
  open();
  EnableWindow(form->handle(), FALSE);
  const bool before = entry_checked(ID_MNUSOUNDON);
  choose(ID_MNUSOUNDON);
  SendMessageW(form->handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(entry_checked(ID_MNUSOUNDON), before);
  EXPECT_NE(form->handle(), nullptr);
}

TEST_F(Form1SettingsTest, TheEndOfTheSessionSaves) {
  start(store);
  search.criteria = "naïve 中 \"quoted\"";
  SendMessageW(form->handle(), WM_ENDSESSION, FALSE, 0);
  EXPECT_EQ(store.get_setting("criteria"), "");
  SendMessageW(form->handle(), WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(store.get_setting("criteria"), search.criteria);
  EXPECT_NE(form->handle(), nullptr);
}

TEST_F(Form1SettingsTest, ASnappedWindowComesBackAlsoAfterItWasMaximised) {
  start(store);
  RECT work;
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const int frame = win32::hidden_frame(win32::window_dpi(form->handle()));
  EXPECT_GT(frame, 0);
  SetWindowPos(form->handle(), nullptr, work.left - frame, work.top, 700,
               work.bottom - work.top + frame, SWP_NOZORDER | SWP_NOACTIVATE);
  const RECT snapped = place_of(form->handle());
  for (const bool maximised : {false, true}) {
    if (maximised) form->show(SW_SHOWMAXIMIZED);
    choose(ID_MNUEXIT);
    start(store);
    const RECT restored = place_of(form->handle());
    EXPECT_TRUE(EqualRect(&restored, &snapped)) << restored.left << ' ' << restored.bottom;
  }
}

TEST_F(Form1SettingsTest, RegistryValuesOfAnyKindAndLengthAreRead) {
  const auto set = [](const wchar_t* name, DWORD type, const void* data, DWORD bytes) {
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, path, name, type, data, bytes), ERROR_SUCCESS);
  };
  set(L"number", REG_DWORD, L"AA", 4);
  set(L"odd", REG_SZ, L"abc", 5);
  set(L"nothing", REG_SZ, nullptr, 0);
  EXPECT_EQ(store.get_setting("odd").substr(0, 2), "ab");
  for (const char* name : {"number", "nothing", "absent"}) EXPECT_EQ(store.get_setting(name), "");
  const std::string megabyte(1'000'000, 'x');
  store.save_setting("long", megabyte);
  EXPECT_EQ(store.get_setting("long"), megabyte);
}

}  // namespace
}  // namespace tallowmere
