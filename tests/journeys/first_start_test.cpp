#include "tests/journeys/journey.h"
#include "version.h"

namespace tallowmere::driver {
namespace {

class FirstStart : public Journey {
 protected:
  /// Opens a topic, sees its answer begin like this, and leaves it and the screen.
  static void read(Window screen, std::string_view topic, std::string_view begin) {
    click(screen, topic);
    const Window answer = screen.child(IDC_HELP_POPUP);
    ASSERT_TRUE(wait_until([&] { return answer.is_visible(); })) << topic;
    EXPECT_TRUE(answer.text().starts_with(begin)) << answer.text();
    for (const Window closed : {answer, screen}) {
      EXPECT_TRUE(screen.is_visible());
      screen.key(VK_ESCAPE);
      ASSERT_TRUE(wait_until([&] { return !closed.is_visible(); }));
    }
  }

  static void click(Window screen, std::string_view topic) {
    int id = IDC_HELP_ITEM;
    while (screen.child(id) && screen.child(id).text() != topic) ++id;
    ASSERT_TRUE(screen.child(id)) << topic;
    screen.child(id).click();
  }
};

TEST_F(FirstStart, OffersADiskToSearchAndHelp) {
  const auto program = start();
  EXPECT_EQ(program->count_label(), "Click on Search Button");
  for (int button = IDC_CMDSEARCH; button <= IDC_CMDEXIT; ++button) {
    const bool usable = button == IDC_CMDSEARCH || button == IDC_CMDEXIT;
    EXPECT_EQ(program->control(button).is_enabled(), usable) << button;
  }
  EXPECT_FALSE(program->control(IDC_TEXT1).is_enabled());
  program->window().command(ID_MNUABOUT);
  const Window about = program->program().wait_for_window("About Tallowmere");
  ASSERT_TRUE(about);
  EXPECT_EQ(about.child(IDC_ABOUT_LABEL1).text(), "Tallowmere 32 - Version " TALLOWMERE_VERSION);
  ASSERT_TRUE(program->close(about, IDOK));

  program->window().command(ID_MNUQTIPS);
  const Window answers = program->program().wait_for_window("Quick Answers");
  ASSERT_TRUE(answers);
  read(answers, "How do I search an entire disk?", "Press Search, then Where To Search.");

  const Window criteria = program->press_search(new_search_caption);
  EXPECT_TRUE(criteria.child(IDC_SEARCH_OPTION + phrase).is_checked());
  EXPECT_EQ(criteria.child(IDC_SEARCH_STATUS).panel_texts(),
            (Names{"txt", own_folder().substr(0, 3) + "+", "All Dates"}));
  const Window hints = program->open(criteria, IDC_SEARCH_HELP, "Searching Hints");
  click(hints, "Examples");
  const Window examples = program->program().wait_for_window("Search Criteria Examples");
  ASSERT_TRUE(examples);
  read(examples, "Find:   software release upgrade", "Three words");
  read(hints, "Logical OR Search", "Any Word (space = OR)");
  EXPECT_TRUE(criteria.is_enabled()) << "it goes on as if nothing had been";
  EXPECT_TRUE(program->close(criteria, IDCANCEL));

  program->control(IDC_CMDEXIT).click();
  EXPECT_TRUE(program->program().wait_for_exit());
  EXPECT_EQ(program->program().exit_code(), 0u);
}

}  // namespace
}  // namespace tallowmere::driver
