#include "app/window_placement.h"
#include "shell/geometry.h"
#include "tests/windows/form1_fixture.h"
#include "win32/dpi.h"
#include "win32/registry.h"

namespace tallowmere {
namespace {

/// Settings in the registry, under a key that only these tests know.
class Form1SettingsTest : public Form1Test {
 protected:
  Form1SettingsTest() : store(path) { RegDeleteTreeW(HKEY_CURRENT_USER, path); }
  ~Form1SettingsTest() override {
    form.reset();
    RegDeleteTreeW(HKEY_CURRENT_USER, path);
  }

  Form1& start() {
    form.reset();
    search = SearchCriteria();
    form = std::make_unique<Form1>(
        Form1::Services{search, store, files, clock, page, "C:\\program\\"});
    return *form;
  }

  void place(int left, int top, int width, int height) {
    SetWindowPos(form->handle(), nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
  }

  RECT rect() const {
    RECT rect;
    GetWindowRect(form->handle(), &rect);
    return rect;
  }

  static constexpr wchar_t path[] = L"Software\\Tallowmere\\Tests";
  win32::RegistrySettings store;
};

TEST_F(Form1SettingsTest, WhatAWindowSavesTheNextOneLoads) {
  start();
  place(30, 20, 750, 500);
  choose(ID_MNUMINIMIZEON);
  choose(ID_MNUSOUNDON);
  choose(ID_MNUSORT + 3);
  search.criteria = "naïve 中 \"quoted\"";
  search.search_type = search_near;
  search.path = "D:\\somewhere\\";
  search.user_types[2] = "c??";
  choose(ID_MNUEXIT);
  EXPECT_EQ(form->handle(), nullptr);

  start();
  EXPECT_EQ(rect().left, 30);
  EXPECT_EQ(rect().top, 20);
  EXPECT_EQ(rect().right, 780);
  EXPECT_EQ(rect().bottom, 520);
  EXPECT_TRUE(entry_checked(ID_MNUMINIMIZEON));
  EXPECT_FALSE(entry_checked(ID_MNUSOUNDON));
  EXPECT_EQ(form->sort_type(), SortKey::folder);
  EXPECT_EQ(search.criteria, "naïve 中 \"quoted\"");
  EXPECT_EQ(search.search_type, search_near);
  EXPECT_EQ(search.path, "D:\\somewhere\\");
  EXPECT_EQ(search.user_types[2], "c??");
}

TEST_F(Form1SettingsTest, TheEndOfTheSessionSaves) {
  start();
  search.criteria = "kept";
  SendMessageW(form->handle(), WM_ENDSESSION, FALSE, 0);
  EXPECT_EQ(store.get_setting("criteria"), "");
  SendMessageW(form->handle(), WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(store.get_setting("criteria"), "kept");
}

TEST_F(Form1SettingsTest, AMaximisedWindowKeepsTheOldPlacement) {
  start();
  place(30, 20, 750, 500);
  choose(ID_MNUEXIT);
  const std::string width = store.get_setting("width");
  start();
  form->show(SW_SHOWMAXIMIZED);
  choose(ID_MNUEXIT);
  EXPECT_EQ(store.get_setting("width"), width);
}

TEST_F(Form1SettingsTest, APlacementOffEveryScreenIsCorrected) {
  const int screen_width = GetSystemMetrics(SM_CXSCREEN);
  for (const char* corner : {"999999", "-999999", "1e300", "0", "junk"}) {
    store.save_setting("left", corner);
    store.save_setting("top", corner);
    store.save_setting("width", "1e99");
    store.save_setting("height", "12");
    start();
    EXPECT_EQ(rect().right - rect().left,
              to_pixels(main_window_design.width, win32::window_dpi(form->handle())))
        << corner;
    EXPECT_NEAR(rect().left + rect().right, screen_width, 3) << corner;
  }
}

TEST_F(Form1SettingsTest, RegistryValuesOfTheWrongTypeAreMissing) {
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key,
                            nullptr),
            ERROR_SUCCESS);
  const DWORD number = 0x41414141;
  RegSetValueExW(key, L"number", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number),
                 sizeof number);
  RegSetValueExW(key, L"odd", 0, REG_SZ, reinterpret_cast<const BYTE*>(L"abc"), 5);
  RegSetValueExW(key, L"nothing", 0, REG_SZ, nullptr, 0);
  RegCloseKey(key);
  EXPECT_EQ(store.get_setting("number"), "");
  EXPECT_EQ(store.get_setting("odd").substr(0, 2), "ab");
  EXPECT_EQ(store.get_setting("nothing"), "");
  EXPECT_EQ(store.get_setting("absent"), "");
  const std::string megabyte(1'000'000, 'x');
  store.save_setting("long", megabyte);
  EXPECT_EQ(store.get_setting("long"), megabyte);
}

}  // namespace
}  // namespace tallowmere
