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

  /// Begins a search, stops it in some way while the huge file is read, and expects its end.
  template <typename Press>
  void expect_stop(const MainWindow& program, Press press) {
    ASSERT_TRUE(wait_until([&] { return program.is_searching(); }));
    EXPECT_FALSE(program.control(IDC_CMDEXIT).is_enabled());
    Sleep(400);
    ASSERT_TRUE(program.is_searching()) << "the run was over before it was stopped";

    press();
    ASSERT_TRUE(wait_until([&] { return program.timing_label() == "Search Stopped"; }));
    EXPECT_EQ(program.control(IDC_CMDSEARCH).text(), "Search");
    EXPECT_TRUE(wait_until([&] { return program.control(IDC_CMDEXIT).is_enabled(); }));
    EXPECT_EQ(program.list().column(0), (Names{"a.txt", "b.txt"}));
    EXPECT_EQ(program.count_label(), "2 file(s) matched out of 3");
  }
};

TEST_F(Stop, ButtonMenuAndEscapeAnswerInsideAHugeFile) {
  const auto program = start();
  program->begin(program->press_search(new_search_caption), phrase, "zero");
  expect_stop(*program, [&] { program->control(IDC_CMDSEARCH).click(); });

  const auto again = [&] {
    const Window prompt = program->press_search(narrow_caption);
    program->begin(program->choose_narrowing(prompt, 0, new_search_caption), phrase, "zero");
  };
  again();
  expect_stop(*program, [&] { program->window().command(ID_MNUSTOP); });
  again();
  expect_stop(*program, [&] { program->control(IDC_CMDSEARCH).key(VK_ESCAPE); });
}

TEST_F(Stop, TheWindowLivesWhileItSearches) {
  const auto program = start();
  program->begin(program->press_search(new_search_caption), phrase, "zero");
  ASSERT_TRUE(wait_until([&] { return program->is_searching(); }));
  // The rows found so far show while the search goes on, and the running count with them.
  EXPECT_TRUE(wait_until([&] { return program->list().count() == 2; }));
  EXPECT_TRUE(wait_until([&] { return program->timing_label() == "2 file(s) matched out of 3"; }))
      << program->timing_label();
  EXPECT_EQ(program->count_label(), "Searching");

  const RECT before = program->list().rectangle();
  const RECT place = program->window().rectangle();
  SetWindowPos(program->window().handle(), nullptr, place.left + 5, place.top + 5,
               place.right - place.left + 60, place.bottom - place.top + 200,
               SWP_NOZORDER | SWP_ASYNCWINDOWPOS);
  EXPECT_TRUE(wait_until([&] {
    const RECT after = program->list().rectangle();
    return after.right - after.left > before.right - before.left;
  }));
  ASSERT_TRUE(program->is_searching());

  // Closing the window ends the search and the program.
  EXPECT_TRUE(program->quit());
}

}  // namespace
}  // namespace tallowmere::driver
