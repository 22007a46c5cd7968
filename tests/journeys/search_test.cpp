#include <tuple>

#include "tests/journeys/journey.h"

namespace tallowmere::driver {
namespace {

class Search : public Journey {
 protected:
  Search() {
    write("alone.txt", "One dog.");
    write("Both.txt", "A DOG and, a little further on, a cat.", 1);
    write("apart.log", "The cat " + std::string(400, '.') + " the dog", 186);
    write("sub\\caf\xC3\xA9.txt", "hotdogs and cats, caf\xE9 noir", 2);
    write("empty.bin", "", 3);
    set_folder_settings();
  }

  /// The row that a file must have: written at 9:15 and `minutes` more.
  ListView::Row row(std::string name, std::string time, std::string size,
                    std::string below = "") const {
    return {std::move(name), "5/20/2001" + std::move(time), std::move(size), folder() + below};
  }

  ListView::Row alone() const { return row("alone.txt", "  9:15a", "8"); }
  ListView::Row both() const { return row("Both.txt", "  9:16a", "38"); }
  ListView::Row apart() const { return row("apart.log", " 12:21p", "416"); }
  ListView::Row cafe() const { return row("caf\xC3\xA9.txt", "  9:17a", "27", "sub\\"); }
  ListView::Row empty() const { return row("empty.bin", "  9:18a", "0"); }
};

TEST_F(Search, EachTypeListsItsFiles) {
  const std::tuple<int, std::string, Rows> cases[] = {
      {all_words, "\"dog\" \"cat\"", {apart(), both(), cafe()}},
      {any_word, "alone one further", {alone(), both()}},
      {phrase, "CAF\xC3\x89 Noir", {cafe()}},
      {near_words, "dog cat", {both()}},
      {phrase, "", {alone(), apart(), both(), cafe(), empty()}},
  };
  for (const auto& [type, criteria, rows] : cases) {
    SCOPED_TRACE(criteria);
    set_folder_settings();
    const auto program = start();
    ASSERT_TRUE(program->search(type, criteria));
    EXPECT_EQ(program->list().rows(), rows);
    EXPECT_EQ(program->count_label(), std::to_string(rows.size()) + " file(s) matched out of 5");
    EXPECT_EQ(program->timing_label().substr(0, 3), "in ");
    ASSERT_TRUE(program->quit());
  }
}

TEST_F(Search, ANarrowedSearchKeepsToTheListOrToTheFile) {
  const auto program = start();
  ASSERT_TRUE(program->search(phrase, "dog"));
  ASSERT_EQ(program->list().count(), 4);
  ASSERT_TRUE(program->close(program->press_search(narrow_caption), IDCANCEL));
  EXPECT_EQ(program->list().count(), 4);

  write("late.txt", "a dog and a cat that no list holds");
  Window criteria =
      program->choose_narrowing(program->press_search(narrow_caption), 1, list_search_caption);
  EXPECT_FALSE(criteria.child(IDC_SEARCH_WHERE).is_enabled());
  program->begin(criteria, all_words, "cat");
  ASSERT_TRUE(program->wait_for_end());
  EXPECT_EQ(program->list().rows(), (Rows{apart(), both()}));
  EXPECT_EQ(program->count_label(), "2 file(s) matched out of 4");

  program->list().select(1);
  criteria =
      program->choose_narrowing(program->press_search(narrow_caption), 2, file_search_caption);
  program->begin(criteria, phrase, "little");
  ASSERT_TRUE(program->wait_for_end());
  EXPECT_EQ(program->count_label(), "Selected File Matched");
  program->window().command(ID_MNUSEARCHFILE);
  criteria = program->program().wait_for_window(file_search_caption);
  program->begin(criteria, phrase, "dots");
  ASSERT_TRUE(program->wait_for_end());
  EXPECT_EQ(program->count_label(), "Selected File Didn't Match");
  EXPECT_EQ(program->list().rows(), (Rows{apart(), both()}));
}

TEST_F(Search, AMissingFolderIsAskedForAgain) {
  settings().set("path", folder() + "later");
  const auto program = start();
  for (const int answer : {IDCANCEL, IDRETRY}) {
    program->begin(program->press_search(new_search_caption), phrase, "dog");
    const Window message = program->program().wait_for_window("Cannot Search Folder");
    ASSERT_TRUE(message);
    EXPECT_EQ(message_box_text(message).back(), '.');
    if (answer == IDRETRY) write("later\\dog.txt", "dog");
    ASSERT_TRUE(program->close(message, answer));
    ASSERT_TRUE(program->wait_for_end());
    EXPECT_EQ(program->timing_label() == "Search Stopped", answer == IDCANCEL);
  }
  EXPECT_EQ(program->list().column(0), Names{"dog.txt"});
  EXPECT_EQ(program->count_label(), "1 file(s) matched out of 1");
}

}  // namespace
}  // namespace tallowmere::driver
