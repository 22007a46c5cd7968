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
