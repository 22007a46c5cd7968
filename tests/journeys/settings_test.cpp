#include "tests/journeys/journey.h"

namespace tallowmere::driver {
namespace {

class SettingsJourney : public Journey {
 protected:
  SettingsJourney() {
    write("one.abc", "red dog");
    set_folder_settings();
  }
};

TEST_F(SettingsJourney, ARestartFindsEverythingAsItWasLeft) {
  RECT place{};
  {
    const auto program = start();
    Window criteria = program->press_search(new_search_caption);
    criteria.child(IDC_SEARCH_CHECK1).click();
    criteria.child(IDC_SEARCH_OPTION + near_words).click();
    ASSERT_TRUE(wait_until([&] { return criteria.child(IDC_SEARCH_PROXIMITY).is_enabled(); }));

    const Window proximity = program->open(criteria, IDC_SEARCH_PROXIMITY, proximity_caption);
    const Window before = proximity.child(IDC_PROX_PICTURE);
    before.key(VK_HOME);
    for (int i = 0; i < 12; ++i) before.key(VK_UP);
    ASSERT_TRUE(wait_until([&] { return before.text() == "12"; })) << before.text();
    proximity.child(IDC_PROX_OPTION + 1).click();
    ASSERT_TRUE(wait_until([&] { return proximity.child(IDC_PROX_OPTION + 1).is_checked(); }));
    ASSERT_TRUE(program->close(proximity, IDOK));

    const Window where = program->open(criteria, IDC_SEARCH_WHERE, where_caption);
    where.child(IDC_PATH_ALL_FILES).click();
    ASSERT_TRUE(wait_until([&] { return !where.child(IDC_PATH_ALL_FILES).is_checked(); }));
    where.child(IDC_PATH_USER_TYPE + 5).set_text("a?c");
    ASSERT_TRUE(wait_until([&] { return where.child(IDC_PATH_USER_CHECK + 5).is_enabled(); }));
    where.child(IDC_PATH_USER_CHECK + 5).click();
    where.child(IDC_PATH_SUBFOLDERS).click();
    ASSERT_TRUE(wait_until([&] { return !where.child(IDC_PATH_SUBFOLDERS).is_checked(); }));
    ASSERT_TRUE(program->close(where, IDOK));

    const Window dates = program->open(criteria, IDC_SEARCH_DATES, dates_caption);
    dates.child(IDC_DATE_OPTION + 2).click();
    ASSERT_TRUE(wait_until([&] { return dates.child(IDC_DATE_OPTION + 2).is_checked(); }));
    ASSERT_TRUE(program->close(dates, IDOK));

    program->begin(criteria, near_words, "red dog");
    ASSERT_TRUE(program->wait_for_end());
    program->window().command(ID_MNUSORT + 4);
    program->window().command(ID_MNUMINIMIZEON);
    SetWindowPos(program->window().handle(), nullptr, 60, 45, 760, 520, SWP_NOZORDER);
    place = program->window().rectangle();
    ASSERT_TRUE(program->quit());
  }
  // All files no, only the sixth type, no subfolders, minimize on, sort by type, sound off, case
  // matters, find on launch, all words near.
  EXPECT_EQ(settings().get("checked"), "NNNNNNYNNYNNNNYNNYY");

  const auto program = start();
  const RECT restored = program->window().rectangle();
  EXPECT_TRUE(EqualRect(&place, &restored))
      << restored.left << ' ' << restored.top << ' ' << restored.right << ' ' << restored.bottom;
  const Window criteria = program->press_search(new_search_caption);
  EXPECT_EQ(criteria.child(IDC_SEARCH_TEXT).text(), "red dog");
  EXPECT_TRUE(criteria.child(IDC_SEARCH_OPTION + near_words).is_checked());
  EXPECT_TRUE(criteria.child(IDC_SEARCH_CHECK1).is_checked());

  const Window proximity = program->open(criteria, IDC_SEARCH_PROXIMITY, proximity_caption);
  EXPECT_EQ(proximity.child(IDC_PROX_PICTURE).text(), "12");
  EXPECT_EQ(proximity.child(IDC_PROX_PICTURE + 1).text(), "110");
  EXPECT_TRUE(proximity.child(IDC_PROX_OPTION + 1).is_checked());
  ASSERT_TRUE(program->close(proximity, IDCANCEL));

  const Window where = program->open(criteria, IDC_SEARCH_WHERE, where_caption);
  EXPECT_FALSE(where.child(IDC_PATH_ALL_FILES).is_checked());
  EXPECT_EQ(where.child(IDC_PATH_USER_TYPE + 5).text(), "a?c");
  EXPECT_TRUE(where.child(IDC_PATH_USER_CHECK + 5).is_checked());
  EXPECT_FALSE(where.child(IDC_PATH_SUBFOLDERS).is_checked());
  ASSERT_TRUE(program->close(where, IDCANCEL));

  const Window dates = program->open(criteria, IDC_SEARCH_DATES, dates_caption);
  EXPECT_TRUE(dates.child(IDC_DATE_OPTION + 2).is_checked());
  ASSERT_TRUE(program->close(dates, IDCANCEL));
}

TEST_F(SettingsJourney, ASecondStartStandsBesideTheFirst) {
  const auto first = start();
  const auto second = start();
  ASSERT_NE(first->window().handle(), second->window().handle());
  ASSERT_TRUE(first->search(phrase, "red dog"));
  ASSERT_TRUE(second->search(phrase, "no such phrase"));
  EXPECT_EQ(first->list().column(0), Names{"one.abc"});
  EXPECT_EQ(second->list().count(), 0);
  ASSERT_TRUE(second->quit());
  EXPECT_EQ(settings().get("criteria"), "no such phrase");
  EXPECT_EQ(first->list().column(0), Names{"one.abc"});
  ASSERT_TRUE(first->quit());
  EXPECT_EQ(settings().get("criteria"), "red dog");  // the last to close wins
}

}  // namespace
}  // namespace tallowmere::driver
