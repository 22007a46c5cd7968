#include "tests/journeys/journey.h"

namespace tallowmere::driver {
namespace {

class SettingsJourney : public Journey {};

TEST_F(SettingsJourney, ARestartFindsEverythingAsItWasLeft) {
  write("below\\one.abc", "red dog");
  set_folder_settings();
  RECT place{};
  Names panels;  // the types, the folder and the dates
  const auto choose = [](const Window& button) {
    const bool before = button.is_checked();
    button.click();
    ASSERT_TRUE(wait_until([&] { return button.is_checked() != before; }));
  };
  {
    const auto program = start();
    const Window criteria = program->press_search(new_search_caption);
    choose(criteria.child(IDC_SEARCH_CHECK1));
    choose(criteria.child(IDC_SEARCH_OPTION + near_words));
    const Window proximity = program->open(criteria, IDC_SEARCH_PROXIMITY, proximity_caption);
    choose(proximity.child(IDC_PROX_OPTION + 1));
    ASSERT_TRUE(program->close(proximity, IDOK));

    const Window where = program->open(criteria, IDC_SEARCH_WHERE, where_caption);
    const Window tree = where.child(IDC_PATH_DIR1);
    tree.open_list_box_entry(static_cast<int>(tree.list_box_texts().size()) - 1);
    choose(where.child(IDC_PATH_ALL_FILES));
    where.child(IDC_PATH_USER_TYPE + 5).set_text("a?c");
    ASSERT_TRUE(wait_until([&] { return where.child(IDC_PATH_USER_CHECK + 5).is_enabled(); }));
    choose(where.child(IDC_PATH_USER_CHECK + 5));
    choose(where.child(IDC_PATH_SUBFOLDERS));
    ASSERT_TRUE(program->close(where, IDOK));

    const Window dates = program->open(criteria, IDC_SEARCH_DATES, dates_caption);
    choose(dates.child(IDC_DATE_OPTION + 2));
    ASSERT_TRUE(program->close(dates, IDOK));
    panels = criteria.child(IDC_SEARCH_STATUS).panel_texts();

    program->begin(criteria, near_words, "red dog");
    ASSERT_TRUE(program->wait_for_end());
    for (const int command : {ID_MNUSORT + 4, ID_MNUMINIMIZEON, ID_MNUSOUNDON, ID_MNUFINDONLAUNCH})
      program->window().command(command);
    SetWindowPos(program->window().handle(), nullptr, 60, 45, 760, 520, SWP_NOZORDER);
    place = program->window().rectangle();
    ASSERT_TRUE(program->quit());
  }
  // All files no, only the sixth type, no subfolders, minimize on, sort by type, sound on, case
  // matters, no find on launch, all words near.
  EXPECT_EQ(settings().get("checked"), "NNNNNNYNNYNNNNYYNNY");

  EXPECT_EQ(settings().get("path"), folder() + "below");

  const auto program = start();
  const RECT restored = program->window().rectangle();
  EXPECT_TRUE(EqualRect(&place, &restored)) << restored.left << ' ' << restored.bottom;
  const Window criteria = program->press_search(new_search_caption);
  EXPECT_EQ(criteria.child(IDC_SEARCH_TEXT).text(), "red dog");
  EXPECT_TRUE(criteria.child(IDC_SEARCH_OPTION + near_words).is_checked());
  EXPECT_TRUE(criteria.child(IDC_SEARCH_CHECK1).is_checked());
  EXPECT_EQ(criteria.child(IDC_SEARCH_STATUS).panel_texts(), panels);
  ASSERT_TRUE(program->close(criteria, IDCANCEL));
}

}  // namespace
}  // namespace tallowmere::driver
