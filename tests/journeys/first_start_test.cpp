#include <algorithm>

#include "tests/journeys/journey.h"

namespace tallowmere::driver {
namespace {

class FirstStart : public Journey {};

TEST_F(FirstStart, OffersOnlyWhatCanBeDoneAndADiskToSearch) {
  const auto program = start();
  EXPECT_EQ(program->count_label(), "Click on Search Button");
  EXPECT_EQ(program->timing_label(), "to Start");
  EXPECT_EQ(program->list().headers(), (Names{"Name", "Date", "Size", "Folder"}));
  for (int button = IDC_CMDSEARCH; button <= IDC_CMDEXIT; ++button) {
    EXPECT_EQ(program->control(button).is_enabled(),
              button == IDC_CMDSEARCH || button == IDC_CMDEXIT)
        << program->control(button).text();
  }

  const Window criteria = program->press_search(new_search_caption);
  EXPECT_FALSE(program->window().is_enabled()) << "the dialog is modal";
  EXPECT_EQ(criteria.child(IDC_SEARCH_TEXT).text(), "");
  EXPECT_TRUE(criteria.child(IDC_SEARCH_OPTION + phrase).is_checked());
  Names panels = criteria.child(IDC_SEARCH_STATUS).panel_texts();
  std::sort(panels.begin(), panels.end());
  EXPECT_EQ(panels, (Names{"All Dates", own_folder().substr(0, 3) + "+", "txt"}));
  EXPECT_TRUE(program->close(criteria, IDCANCEL));
  EXPECT_TRUE(wait_until([&] { return program->window().is_enabled(); }));

  program->control(IDC_CMDEXIT).click();
  EXPECT_TRUE(program->program().wait_for_exit());
  EXPECT_EQ(program->program().exit_code(), 0u);
}

}  // namespace
}  // namespace tallowmere::driver
