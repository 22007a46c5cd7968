#include <gtest/gtest.h>

#include <string>

#include "results/result_list.h"
#include "results/row_text.h"
#include "tests/support/memory_files.h"

namespace tallowmere {
namespace {

const std::string sep(1, path_separator);

TEST(ResultList, FillDropsEqualNeighboursAndLowersBothCounters) {
  ResultList list;
  const FileRecord a{"a.txt", 5, "/f/", 1}, b{"A.txt", 5, "/f/", 1}, c{"A.txt", 6, "/f/", 1},
      d{"A.txt", 6, "/F/", 1}, e{"A.txt", 6, "/F/", 2};
  for (const FileRecord& record : {a, a, b, c, d, e, a, a}) list.add_file_row(record);
  list.matched_count = 8;
  list.fill_result_list();
  EXPECT_EQ(list.records(), (std::vector<FileRecord>{a, b, c, d, e, a}));
  EXPECT_EQ(list.matched_count, 6);
}

TEST(ResultList, SplitsAndFindsPaths) {
  ResultList list;
  list.add_file_row("x" + sep + "y" + sep + "Notes.v2.txt", FileFacts{3 * ticks_per_second + 5, 4});
  list.add_file_row(sep + "plain", FileFacts{});
  list.add_file_row("no folder", FileFacts{});
  const std::string folder = "x" + sep + "y" + sep;
  EXPECT_EQ(list.record(0), (FileRecord{"Notes.v2.txt", 3 * ticks_per_second, folder, 4}));
  EXPECT_EQ(list.record(2).filepath + list.list2_extension(0) + list.list2_extension(1), "txt");
  EXPECT_EQ(list.indexed_filename(0), "x" + sep + "y" + sep + "Notes.v2.txt");
  EXPECT_EQ(list.find_result_index(sep + "plain"), 1u);
  EXPECT_EQ(list.find_result_index(sep + "Plain"), 3u);
  list.sort_descending = true;
  list.viewed_index = 1;
  list.setup_new_list();
  EXPECT_TRUE(list.file_count() == 0 && list.viewed_index == -1 && list.sort_descending);
}

TEST(ResultList, RemovingRowsAndChangingRecords) {
  ResultList list;
  for (const char* name : {"0", "1", "2", "3", "4", "5"}) list.add_file_row("/", name, {});
  list.matched_count = 6;
  list.viewed_index = 4;
  list.remove_rows(std::vector<std::size_t>{0, 2, 3});
  ASSERT_EQ(list.file_count(), 3u);
  EXPECT_EQ(list.record(0).filename + list.record(1).filename + list.record(2).filename, "145");
  EXPECT_TRUE(list.viewed_index == 1 && list.matched_count == 3);
  list.remove_rows(std::vector<std::size_t>{1, 2});
  EXPECT_EQ(list.viewed_index, -1);
  list.change_record(0, FileRecord{"9", 1, "/f/", 2});
  EXPECT_TRUE(list.set_facts(0, FileFacts{3 * ticks_per_second + 1, 4}));
  EXPECT_EQ(list.record(0), (FileRecord{"9", 3 * ticks_per_second, "/f/", 4}));
}

TEST(RowText, Cells) {
  const FixedClock clock;
  const DateFormat format{clock, [](const Date& d) { return std::to_string(d.year) + " ."; }};
  const Ticks midnight = clock.start_of_day({2024, 2, 1});
  FileRecord record{"a.txt", midnight, "/f/", 1234567};
  EXPECT_EQ(row_cell(record, ResultColumn::size, format), "1234567");
  // Dates line up on the right.
  for (const auto& [seconds, cell] : {std::pair{0, "2024."},
                                      {1, "2024. 12:00a"},
                                      {9 * 3600 + 300, "2024.  9:05a"},
                                      {45000, "2024. 12:30p"},
                                      {86399, "2024. 11:59p"}}) {
    record.filedate = midnight + seconds * ticks_per_second;
    EXPECT_EQ(row_cell(record, ResultColumn::date, format), cell);
  }
  EXPECT_EQ(row_cell({}, ResultColumn::date, format), "") << "a date that is not known";
}

}  // namespace
}  // namespace tallowmere
