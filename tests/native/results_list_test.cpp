#include <gtest/gtest.h>

#include <string>

#include "results/result_list.h"
#include "results/row_text.h"

namespace tallowmere {
namespace {

const std::string sep(1, path_separator);

TEST(ResultList, FillDropsEqualNeighboursAndLowersBothCounters) {
  ResultList list;
  const FileRecord same{"a.txt", 5, "/f/", 1};
  for (int i = 0; i < 3; ++i) list.add_file_row(same);
  list.add_file_row(FileRecord{"A.txt", 5, "/f/", 1});
  list.add_file_row(FileRecord{"A.txt", 6, "/f/", 1});
  list.add_file_row(FileRecord{"A.txt", 6, "/F/", 1});
  list.add_file_row(FileRecord{"A.txt", 6, "/F/", 2});
  list.add_file_row(same);
  list.add_file_row(same);
  list.matched_count = 9;
  list.fill_result_list();
  EXPECT_EQ(list.file_count(), 6u);
  EXPECT_EQ(list.matched_count, 6);
  EXPECT_EQ(list.record(0), same);
  EXPECT_EQ(list.record(1).filename, "A.txt");
  EXPECT_EQ(list.record(4).filesize, 2);
  EXPECT_EQ(list.record(5), same) << "only neighbours are compared";
}

TEST(ResultList, SplitsAndFindsPaths) {
  ResultList list;
  list.add_file_row("x" + sep + "y" + sep + "Notes.v2.txt", FileFacts{3 * ticks_per_second + 5, 4});
  list.add_file_row(sep + "plain", FileFacts{});
  list.add_file_row("no folder", FileFacts{});
  EXPECT_EQ(list.record(0),
            (FileRecord{"Notes.v2.txt", 3 * ticks_per_second, "x" + sep + "y" + sep, 4}));
  EXPECT_EQ(list.record(2).filepath, "");
  EXPECT_EQ(list.list2_extension(0), "txt");
  EXPECT_EQ(list.list2_extension(1), "");
  EXPECT_EQ(list.indexed_filename(0), "x" + sep + "y" + sep + "Notes.v2.txt");
  EXPECT_EQ(list.find_result_index(sep + "plain"), 1u);
  EXPECT_EQ(list.find_result_index(sep + "Plain"), 3u);
  EXPECT_EQ(list.find_result_index(""), 3u);

  list.sort_descending = true;
  list.viewed_index = 1;
  EXPECT_EQ(list.take_records().size(), 3u);
  list.setup_new_list();
  EXPECT_EQ(list.file_count(), 0u);
  EXPECT_EQ(list.viewed_index, -1);
  EXPECT_TRUE(list.sort_descending);
}

TEST(ResultList, RemovingRowsAndChangingRecords) {
  ResultList list;
  for (const char* name : {"0", "1", "2", "3", "4", "5"}) {
    list.add_file_row("/", name, FileFacts{});
  }
  list.matched_count = 6;
  list.viewed_index = 4;
  list.remove_rows(std::vector<std::size_t>{0, 2, 3});
  ASSERT_EQ(list.file_count(), 3u);
  EXPECT_EQ(list.record(0).filename + list.record(1).filename + list.record(2).filename, "145");
  EXPECT_EQ(list.viewed_index, 1);
  EXPECT_EQ(list.matched_count, 3);
  list.remove_rows({});
  EXPECT_EQ(list.viewed_index, 1);
  list.remove_rows(std::vector<std::size_t>{1, 2});
  EXPECT_EQ(list.viewed_index, -1);
  list.change_record(0, FileRecord{"9", 1, "/f/", 2});
  EXPECT_TRUE(list.set_facts(0, FileFacts{3 * ticks_per_second + 1, 4}));
  EXPECT_EQ(list.record(0), (FileRecord{"9", 3 * ticks_per_second, "/f/", 4}));
}

TEST(ResultList, InstrReverse) {
  EXPECT_EQ(instr_reverse(7, "a.b.c.d", ".", false), 6);
  EXPECT_EQ(instr_reverse(5, "a.b.c.d", ".", false), 4);
  EXPECT_EQ(instr_reverse(1000, "a.b", ".", false), 2);
  EXPECT_EQ(instr_reverse(2, "xabc", "abc", false), 2) << "the match may run past the start";
  EXPECT_EQ(instr_reverse(4, "xABC", "abc", false), 0);
  EXPECT_EQ(instr_reverse(4, "xABC", "abc", true), 2);
  EXPECT_EQ(instr_reverse(0, "abc", "a", false), 0);
  EXPECT_EQ(instr_reverse(-3, "abc", "a", false), 0);
  EXPECT_EQ(instr_reverse(1, "", "a", false), 0);
}

TEST(RowText, DateCellsLineUpOnTheRight) {
  const Date day{2024, 2, 1};
  EXPECT_EQ(format_row_date({day, 9, 5, 0}, "2/1/2024"), "2/1/2024  9:05a");
  EXPECT_EQ(format_row_date({day, 10, 15, 0}, "2/1/2024"), "2/1/2024 10:15a");
  EXPECT_EQ(format_row_date({day, 12, 30, 0}, "2/1/2024"), "2/1/2024 12:30p");
  EXPECT_EQ(format_row_date({day, 0, 5, 0}, "2/1/2024"), "2/1/2024 12:05a");
  EXPECT_EQ(format_row_date({day, 23, 59, 0}, "1. 2. 2024"), "1.2.2024 11:59p");
  EXPECT_EQ(format_row_date({day, 0, 0, 0}, "2/1/2024"), "2/1/2024");
  EXPECT_EQ(format_row_date({day, 0, 0, 1}, "2/1/2024"), "2/1/2024 12:00a");
}

class NoonClock : public Clock {
 public:
  double seconds_since_midnight() const override { return 0; }
  Date today() const override { return {2024, 2, 1}; }
  DateTime to_local(Ticks) const override { return {{2024, 2, 1}, 15, 4, 0}; }
  Ticks start_of_day(const Date&) const override { return 0; }
};

TEST(RowText, Cells) {
  const NoonClock clock;
  const DateFormat format{clock, [](const Date& d) { return std::to_string(d.year); }};
  FileRecord record{"a.txt", 1, "/f/", 1234567};
  EXPECT_EQ(row_cell(record, ResultColumn::name, format), "a.txt");
  EXPECT_EQ(row_cell(record, ResultColumn::date, format), "2024  3:04p");
  EXPECT_EQ(row_cell(record, ResultColumn::size, format), "1234567");
  EXPECT_EQ(row_cell(record, ResultColumn::folder, format), "/f/");
  record.filedate = 0;
  EXPECT_EQ(row_cell(record, ResultColumn::date, format), "");
}

}  // namespace
}  // namespace tallowmere
