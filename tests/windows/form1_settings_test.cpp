#include <map>

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
  std::map<int, bool> marks;
  for (const int id : {ID_MNUMINIMIZEON, ID_MNUSOUNDON, ID_MNUFINDONLAUNCH}) {
    marks[id] = !entry_checked(id);
    choose(id);
  }
  choose(ID_MNUSORT + 3);
  search.criteria = "naïve 中 \"quoted\"";
  SendMessageW(form->handle(), WM_ENDSESSION, FALSE, 0);
  EXPECT_EQ(store.get_setting("criteria"), "");
  SendMessageW(form->handle(), WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(store.get_setting("criteria"), search.criteria);
  search.path = "D:\\somewhere\\";
  choose(ID_MNUEXIT);
  EXPECT_EQ(form->handle(), nullptr);

  start();
  const RECT placed{30, 20, 780, 520};
  const RECT restored = rect();
  EXPECT_TRUE(EqualRect(&restored, &placed)) << restored.left << ' ' << restored.right;
  for (const auto& [id, mark] : marks) EXPECT_EQ(entry_checked(id), mark) << id;
  EXPECT_EQ(form->sort_type(), SortKey::folder);
  EXPECT_EQ(search.criteria, "naïve 中 \"quoted\"");
  EXPECT_EQ(search.path, "D:\\somewhere\\");
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

TEST_F(Form1SettingsTest, ASnappedWindowComesBack) {
  start();
  RECT work;
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const int frame = win32::hidden_frame(win32::window_dpi(form->handle()));
  place(work.left - frame, work.top, 700, work.bottom - work.top + frame);
  const RECT snapped = rect();
  choose(ID_MNUEXIT);
  start();
  const RECT restored = rect();
  EXPECT_TRUE(EqualRect(&restored, &snapped)) << restored.left << ' ' << restored.bottom;
  EXPECT_GT(frame, 0);
}

TEST_F(Form1SettingsTest, APlacementOffEveryScreenIsCorrected) {
  const int screen_width = GetSystemMetrics(SM_CXSCREEN);
  for (const char* corner : {"-999999", "1e300"}) {
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
