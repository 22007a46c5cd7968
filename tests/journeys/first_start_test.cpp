#include <algorithm>

#include "tests/journeys/journey.h"

namespace tallowmere::driver {
namespace {

class FirstStart : public Journey {};

TEST_F(FirstStart, ShowsThePromptAndOffersOnlyWhatCanBeDone) {
  const auto program = start();
  EXPECT_EQ(program->count_label(), "Click on Search Button");
  EXPECT_EQ(program->timing_label(), "to Start");
  EXPECT_EQ(program->list().headers(), (Names{"Name", "Date", "Size", "Folder"}));
  EXPECT_EQ(program->list().count(), 0);
  for (const int live : {IDC_CMDSEARCH, IDC_CMDEXIT}) {
    EXPECT_TRUE(program->control(live).is_enabled()) << program->control(live).text();
  }
  for (const int idle : {IDC_CMDVIEW, IDC_CMDFINDNEXT, IDC_CMDFINDPREV, IDC_CMDLAUNCH, IDC_CMDHYPER,
                         IDC_CMDRESTORE}) {
    EXPECT_FALSE(program->control(idle).is_enabled()) << program->control(idle).text();
  }
  program->control(IDC_CMDEXIT).click();
  EXPECT_TRUE(program->program().wait_for_exit());
  EXPECT_EQ(program->program().exit_code(), 0u);
}

TEST_F(FirstStart, TheDialogsHoldTheDefaults) {
  const auto program = start();
  const Window criteria = program->press_search(new_search_caption);
  EXPECT_FALSE(program->window().is_enabled()) << "the dialog is modal";
  EXPECT_EQ(criteria.child(IDC_SEARCH_TEXT).text(), "");
  EXPECT_TRUE(criteria.child(IDC_SEARCH_OPTION + phrase).is_checked());
  EXPECT_FALSE(criteria.child(IDC_SEARCH_CHECK1).is_checked());
  EXPECT_FALSE(criteria.child(IDC_SEARCH_PROXIMITY).is_enabled());
  Names panels = criteria.child(IDC_SEARCH_STATUS).panel_texts();
  std::sort(panels.begin(), panels.end());
  const std::string root = own_folder().substr(0, 3);
  EXPECT_EQ(panels, (Names{"All Dates", root + "+", "txt"}));

  const Window where = program->open(criteria, IDC_SEARCH_WHERE, where_caption);
  const Names types{"txt", "doc", "htm", "log", "w??", ""};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(where.child(IDC_PATH_USER_TYPE + i).text(), types[static_cast<std::size_t>(i)]);
    EXPECT_EQ(where.child(IDC_PATH_USER_CHECK + i).is_checked(), i == 0) << i;
    EXPECT_EQ(where.child(IDC_PATH_USER_CHECK + i).is_enabled(), i != 5) << i;
  }
  EXPECT_TRUE(where.child(IDC_PATH_SUBFOLDERS).is_checked());
  EXPECT_FALSE(where.child(IDC_PATH_ALL_FILES).is_checked());
  EXPECT_TRUE(program->close(where, IDCANCEL));

  const Window dates = program->open(criteria, IDC_SEARCH_DATES, dates_caption);
  EXPECT_TRUE(dates.child(IDC_DATE_OPTION).is_checked());
  EXPECT_TRUE(program->close(dates, IDCANCEL));

  criteria.child(IDC_SEARCH_OPTION + near_words).click();
  EXPECT_TRUE(wait_until([&] { return criteria.child(IDC_SEARCH_PROXIMITY).is_enabled(); }));
  const Window proximity = program->open(criteria, IDC_SEARCH_PROXIMITY, proximity_caption);
  EXPECT_EQ(proximity.child(IDC_PROX_PICTURE).text(), "110");
  EXPECT_EQ(proximity.child(IDC_PROX_PICTURE + 1).text(), "110");
  EXPECT_TRUE(proximity.child(IDC_PROX_OPTION).is_checked());
  EXPECT_TRUE(program->close(proximity, IDCANCEL));

  EXPECT_TRUE(program->close(criteria, IDCANCEL));
  EXPECT_TRUE(wait_until([&] { return program->window().is_enabled(); }));
}

}  // namespace
}  // namespace tallowmere::driver
