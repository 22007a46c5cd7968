#include "tests/journeys/journey.h"

namespace tallowmere::driver {
namespace {

class Viewer : public Journey {
 protected:
  Viewer() { set_folder_settings(); }

  /// Selects a row and waits until its file shows.
  static Window show(const MainWindow& program, int row) {
    program.list().select(row);
    const Window box = program.control(IDC_TEXT1);
    EXPECT_TRUE(wait_until([&] { return box.is_enabled() && !box.text().empty(); }));
    return box;
  }

  /// Presses a button and waits until the selection has moved to something else.
  static bool step(const MainWindow& program, int button) {
    const Window box = program.control(IDC_TEXT1);
    const auto place = [&] { return box.text() + std::to_string(box.selection_start()); };
    const std::string before = place();
    program.control(button).click();
    return wait_until([&] { return place() != before; });
  }

  /// The text from the selection on, as far as the next blank.
  static std::string word_at_selection(Window box) {
    const std::string text = box.text();
    const auto start = static_cast<std::size_t>(box.selection_start());
    return text.substr(start, text.find(' ', start) - start);
  }
};

TEST_F(Viewer, StepsThroughAllHitsOfALongFileAndBack) {
  constexpr int hits = 12;
  std::string content;
  for (int i = 0; i < hits; ++i) {
    content += i % 2 ? "Needle" : "NEEDLE";
    content += "-" + std::to_string(i) + " ";
    // Some hits lie close together, others chunks apart.
    for (int line = 0; line < (i % 4 == 3 ? 1500 : 3); ++line) content += "Only hay.\r\n";
  }
  write("long.txt", content);
  write("other.txt", "one needle");
  const auto program = start();
  ASSERT_TRUE(program->search(phrase, "needle"));
  const Window box = show(*program, 0);
  EXPECT_EQ(program->window().text(), " long.txt - Tallowmere 32");
  const auto expected = [](int i) { return (i % 2 ? "Needle-" : "NEEDLE-") + std::to_string(i); };
  const auto check = [&](int i) {
    EXPECT_EQ(word_at_selection(box), expected(i));
    EXPECT_EQ(box.selected_text(), expected(i).substr(0, 6));
  };
  for (int i = 0; i < hits; ++i) {
    check(i);
    ASSERT_TRUE(step(*program, IDC_CMDFINDNEXT));
  }
  check(0);  // once round
  ASSERT_TRUE(step(*program, IDC_CMDFINDPREV));
  for (int i = hits - 1; i > 0; --i) {
    check(i);
    ASSERT_TRUE(step(*program, IDC_CMDFINDPREV));
  }
  check(0);
}

TEST_F(Viewer, HyperFindAndBack) {
  write("story.txt",
        "The lantern hung in the tower. A LANTERN needs oil; the tower needs a lantern.");
  const auto program = start();
  ASSERT_TRUE(program->search(all_words, "oil"));
  const Window box = show(*program, 0);
  const Window hyper = program->control(IDC_CMDHYPER);
  const Window restore = program->control(IDC_CMDRESTORE);
  EXPECT_FALSE(hyper.is_enabled());
  EXPECT_FALSE(restore.is_enabled());

  box.select_text(static_cast<int>(box.text().find("needs")), 5);
  ASSERT_TRUE(wait_until([&] { return hyper.is_enabled(); }));
  hyper.click();
  ASSERT_TRUE(wait_until([&] { return restore.is_enabled() && box.selected_text() == "needs"; }));
  EXPECT_EQ(program->count_label(), "Selected File Matched");
  const int first = box.selection_start();
  ASSERT_TRUE(step(*program, IDC_CMDFINDNEXT));
  EXPECT_EQ(box.selected_text(), "needs");
  EXPECT_GT(box.selection_start(), first);

  restore.click();
  ASSERT_TRUE(wait_until([&] { return box.selected_text() == "oil"; }));
  ASSERT_TRUE(wait_until([&] { return hyper.text() == "Restore Hyper" && hyper.is_enabled(); }));
  EXPECT_FALSE(restore.is_enabled());
  hyper.click();
  ASSERT_TRUE(wait_until([&] { return box.selected_text() == "needs" && restore.is_enabled(); }));
  EXPECT_EQ(hyper.text(), "HyperFind");
}

TEST_F(Viewer, AFileThatChangesWhileItIsViewedIsShownAfresh) {
  write("a.txt", "first needle");
  write("b.txt", "needle, and some more");
  settings().set("checked", "YNNNNNNYNNNNYNNNYYN");  // sorted by size
  const auto program = start();
  ASSERT_TRUE(program->search(phrase, "needle"));
  const Window box = show(*program, 1);
  write("a.txt", "changed: a needle at another place, and a longer text", 1);
  program->control(IDC_CMDFINDNEXT).click();
  const Window message = program->program().wait_for_window("File Has Changed");
  ASSERT_TRUE(message);
  EXPECT_EQ(message_box_text(message), "The file has been modified since last accessed.");
  ASSERT_TRUE(program->close(message, IDOK));
  ASSERT_TRUE(wait_until([&] { return box.text().starts_with("changed: "); }));
  EXPECT_EQ(box.selected_text(), "needle");
  EXPECT_EQ(program->list().column(0), (Names{"a.txt", "b.txt"}));
  EXPECT_EQ(program->list().cell(0, 2), "53");
  EXPECT_EQ(program->list().selected(), std::vector<int>{0});
  EXPECT_TRUE(program->control(IDC_LBLFILEINFO).text().starts_with("53 bytes  "));
}

}  // namespace
}  // namespace tallowmere::driver
