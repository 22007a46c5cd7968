#include <algorithm>

#include "tests/journeys/journey.h"

namespace tallowmere::driver {
namespace {

class Sorting : public Journey {
 protected:
  enum Key { by_name, by_date, by_size, by_folder, by_type };

  Sorting() {
    write("b.txt", "1234567", 30);
    write("C.tar.gz", "1234567", 20);
    write("z\\a.log", "123", 10);
    write("a.txt", "12345678901", 0);
    set_folder_settings();
  }

  /// The names in the order of the list, once it differs from `before`.
  Names next_order(const MainWindow& program, const Names& before) const {
    wait_until([&] { return program.list().column(0) != before; });
    return program.list().column(0);
  }
};

TEST_F(Sorting, HeadersAndMenuSortAndReverse) {
  const auto program = start();
  ASSERT_TRUE(program->search(phrase, "12"));
  const ListView list = program->list();
  const Names by_names{"a.log", "a.txt", "b.txt", "C.tar.gz"};
  ASSERT_EQ(list.column(0), by_names);
  list.select(1);

  // Right after a search the checked key sorts afresh; only then does it reverse.
  list.click_header(by_name);
  EXPECT_FALSE(wait_until([&] { return list.column(0) != by_names; }, 300));
  list.click_header(by_name);
  EXPECT_EQ(next_order(*program, by_names), (Names{"C.tar.gz", "b.txt", "a.txt", "a.log"}));

  struct Step {
    bool header;
    Key key;
    Names names;
  };
  const Step steps[] = {
      {true, by_size, {"a.txt", "b.txt", "C.tar.gz", "a.log"}},
      {false, by_size, {"a.log", "C.tar.gz", "b.txt", "a.txt"}},
      {true, by_date, {"b.txt", "C.tar.gz", "a.log", "a.txt"}},
      {false, by_folder, {"a.txt", "b.txt", "C.tar.gz", "a.log"}},
      {false, by_type, {"a.log", "C.tar.gz", "a.txt", "b.txt"}},
      {false, by_type, {"b.txt", "a.txt", "C.tar.gz", "a.log"}},
      {true, by_name, by_names},
  };
  for (const Step& step : steps) {
    SCOPED_TRACE(step.names.front() + ", key " + std::to_string(step.key));
    const Names before = list.column(0);
    if (step.header) {
      list.click_header(step.key);
    } else {
      program->window().command(ID_MNUSORT + step.key);
    }
    EXPECT_EQ(next_order(*program, before), step.names);
    const auto row = std::find(step.names.begin(), step.names.end(), "a.txt") - step.names.begin();
    EXPECT_TRUE(
        wait_until([&] { return list.selected() == std::vector<int>{static_cast<int>(row)}; }));
  }
}

}  // namespace
}  // namespace tallowmere::driver
