#include "tests/journeys/journey.h"
#include "version.h"

namespace tallowmere::driver {
namespace {

class Help : public Journey {
 protected:
  /// The item of a help screen with this text.
  static Window item(Window screen, std::string_view text) {
    for (int id = IDC_HELP_ITEM; const Window found = screen.child(id); ++id) {
      if (found.text() == text) return found;
    }
    return Window();
  }

  /// Opens a topic and expects its answer to begin like this.
  static void expect_answer(Window screen, std::string_view topic, std::string_view begin) {
    const Window link = item(screen, topic);
    ASSERT_TRUE(link) << topic;
    const Window answer = screen.child(IDC_HELP_POPUP);
    link.click();
    ASSERT_TRUE(wait_until([&] { return answer.is_visible(); })) << topic;
    EXPECT_TRUE(answer.text().starts_with(begin)) << answer.text();
  }

  /// Esc closes the answer first, then the screen.
  static void leave(Window screen) {
    const Window answer = screen.child(IDC_HELP_POPUP);
    screen.key(VK_ESCAPE);
    ASSERT_TRUE(wait_until([&] { return !answer.is_visible(); }));
    EXPECT_TRUE(screen.is_visible());
    screen.key(VK_ESCAPE);
    ASSERT_TRUE(wait_until([&] { return !screen.is_visible(); }));
  }
};

TEST_F(Help, QuickAnswersAndAboutOpenFromTheMenu) {
  const auto program = start();
  program->window().command(ID_MNUQTIPS);
  const Window screen = program->program().wait_for_window("Quick Answers");
  ASSERT_TRUE(screen);
  EXPECT_FALSE(program->window().is_enabled());
  expect_answer(screen, "How do I search an entire disk?", "Press Search, then Where To Search.");
  leave(screen);

  program->window().command(ID_MNUABOUT);
  const Window about = program->program().wait_for_window("About Tallowmere");
  ASSERT_TRUE(about);
  EXPECT_EQ(about.child(IDC_ABOUT_LABEL1).text(), "Tallowmere 32 - Version " TALLOWMERE_VERSION);
  ASSERT_TRUE(program->close(about, IDOK));
  EXPECT_TRUE(program->window().is_enabled());
}

TEST_F(Help, HintsAndTheirExamplesOpenFromTheCriteriaDialog) {
  set_folder_settings();
  write("one.txt", "red dog");
  const auto program = start();
  const Window criteria = program->press_search(new_search_caption);
  const Window hints = program->open(criteria, IDC_SEARCH_HELP, "Searching Hints");
  ASSERT_TRUE(hints);
  EXPECT_FALSE(criteria.is_enabled());
  item(hints, "Examples").click();
  const Window examples = program->program().wait_for_window("Search Criteria Examples");
  ASSERT_TRUE(examples);
  expect_answer(examples, "Find:   software release upgrade", "Three words");
  leave(examples);
  expect_answer(hints, "Logical OR Search", "Any Word (space = OR)");
  leave(hints);

  // The dialog below goes on as if nothing had been.
  EXPECT_TRUE(criteria.is_enabled());
  program->begin(criteria, phrase, "red dog");
  ASSERT_TRUE(program->wait_for_end());
  EXPECT_EQ(program->list().column(0), Names{"one.txt"});
}

}  // namespace
}  // namespace tallowmere::driver
