#include <algorithm>

#include "tests/journeys/journey.h"

namespace tallowmere::driver {
namespace {

class Sorting : public Journey {
 protected:
  enum Key { by_name, by_date, by_size, by_folder, by_type };
};

TEST_F(Sorting, HeadersAndMenuSortAndReverse) {
  write("b.txt", "1234567", 30);
  write("C.tar.gz", "1234567", 20);
  write("z\\a.log", "123", 10);
  write("a.txt", "12345678901", 0);
  set_folder_settings();
  const auto program = start();
  ASSERT_TRUE(program->search(phrase, "12"));
  const ListView list = program->list();
  const Names by_names{"a.log", "a.txt", "b.txt", "C.tar.gz"};
  ASSERT_EQ(list.column(0), by_names);
  list.select(1);
  const struct {
    bool header;
    Key key;
    Names names;
  } steps[] = {
      {true, by_name, by_names},  // right after a search it sorts afresh; only then it reverses
      {true, by_name, {"C.tar.gz", "b.txt", "a.txt", "a.log"}},
      {true, by_size, {"a.txt", "b.txt", "C.tar.gz", "a.log"}},
      {false, by_size, {"a.log", "C.tar.gz", "b.txt", "a.txt"}},
      {true, by_date, {"b.txt", "C.tar.gz", "a.log", "a.txt"}},
      {false, by_folder, {"a.txt", "b.txt", "C.tar.gz", "a.log"}},
      {false, by_type, {"a.log", "C.tar.gz", "a.txt", "b.txt"}},
  };
  for (const auto& [header, key, names] : steps) {
    if (header) {
      list.click_header(key);
    } else {
      program->window().command(ID_MNUSORT + key);
    }
    const auto row = std::find(names.begin(), names.end(), "a.txt") - names.begin();
    EXPECT_TRUE(wait_until([&] {
      return list.column(0) == names && list.selected() == std::vector{static_cast<int>(row)};
    })) << names.front()
        << key;
  }
}

}  // namespace
}  // namespace tallowmere::driver
