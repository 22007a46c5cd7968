#include <functional>

#include "tests/journeys/journey.h"

namespace tallowmere::driver {
namespace {

class Stop : public Journey {
 protected:
  Stop() {
    write("b.txt", "zero");
    write("a.txt", "zero");
    write_sparse("huge.bin", std::int64_t{200} << 30);  // reading it takes minutes
    set_folder_settings();
  }

  /// Begins a search and waits until it is in the huge file.
  static void search(const MainWindow& program, Window criteria) {
    program.begin(criteria, phrase, "zero");
    // The rows found so far show while the search goes on, and the running count with them.
    ASSERT_TRUE(wait_until([&] { return program.list().count() == 2; }));
    EXPECT_TRUE(wait_until([&] { return program.timing_label() == "2 file(s) matched out of 3"; }));
    EXPECT_EQ(program.count_label(), "Searching");
    EXPECT_FALSE(program.control(IDC_CMDEXIT).is_enabled());
    ASSERT_TRUE(program.is_searching());
  }
};

TEST_F(Stop, ButtonMenuAndEscapeAnswerInsideAHugeFile) {
  const auto program = start();
  const Window button = program->control(IDC_CMDSEARCH);
  search(*program, program->press_search(new_search_caption));
  for (const auto& stop : {std::function([&] { button.click(); }),
                           {[&] { program->window().command(ID_MNUSTOP); }},
                           {[&] { button.key(VK_ESCAPE); }}}) {
    stop();
    ASSERT_TRUE(program->wait_for_end());
    EXPECT_EQ(program->timing_label(), "Search Stopped");
    EXPECT_EQ(program->list().column(0), (Names{"a.txt", "b.txt"}));
    EXPECT_EQ(program->count_label(), "2 file(s) matched out of 3");
    search(*program,
           program->choose_narrowing(program->press_search(narrow_caption), 0, new_search_caption));
  }

  // The window lives meanwhile. To close it ends the search and the program.
  const RECT before = program->list().rectangle();
  SetWindowPos(program->window().handle(), nullptr, 5, 5, before.right - before.left + 90, 600,
               SWP_NOZORDER | SWP_ASYNCWINDOWPOS);
  EXPECT_TRUE(wait_until([&] {
    const RECT after = program->list().rectangle();
    return after.right - after.left > before.right - before.left;
  }));
  ASSERT_TRUE(program->is_searching());
  EXPECT_TRUE(program->quit());
}

}  // namespace
}  // namespace tallowmere::driver
