#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "engine/letter_case.h"
#include "results/result_sort.h"
#include "results/sort_command.h"
#include "tests/support/seed.h"

namespace tallowmere {
namespace {

std::string type_of(const std::string& name) {
  const std::size_t dot = name.find('.');
  return dot == std::string::npos ? name : name.substr(dot + 1);
}

/// A record and its texts as they are compared.
struct Row {
  explicit Row(const FileRecord& file)
      : record(file),
        name(lower_case(file.filename)),
        folder(lower_case(file.filepath)),
        type(lower_case(type_of(file.filename))) {}
  FileRecord record;
  std::string name, folder, type;
};

/// Whether `b`, now after `a`, must come before it.
bool out_of_order(const Row& a, const Row& b, SortKey key) {
  const FileRecord &one = a.record, &other = b.record;
  if (key == SortKey::date && one.filedate != other.filedate) return one.filedate < other.filedate;
  if (key == SortKey::size && one.filesize != other.filesize) return one.filesize < other.filesize;
  if (key == SortKey::folder && a.folder != b.folder) return a.folder > b.folder;
  if (key == SortKey::type && a.type != b.type) return a.type > b.type;
  return a.name > b.name;
}

std::ptrdiff_t half_to_even(std::ptrdiff_t number) {
  return (number + (number % 4 == 3)) / 2;
}

/// The Shell sort as it is defined, inner walk down to index 0 and all.
std::vector<FileRecord> literal_sort(const std::vector<FileRecord>& records, SortKey key) {
  std::vector<Row> rows(records.begin(), records.end());
  const std::ptrdiff_t count = std::ssize(rows);
  for (std::ptrdiff_t gap = half_to_even(count); gap >= 1; gap = half_to_even(gap)) {
    for (std::ptrdiff_t i = gap; i < count; ++i) {
      for (std::ptrdiff_t j = i - gap; j >= 0; j -= gap) {
        if (out_of_order(rows[j], rows[j + gap], key)) std::swap(rows[j], rows[j + gap]);
      }
    }
  }
  std::vector<FileRecord> sorted;
  for (Row& row : rows) sorted.push_back(std::move(row.record));
  return sorted;
}

/// Few different keys, so that most records tie; the exact spelling tells tied ones apart.
std::vector<FileRecord> random_rows(std::mt19937& random, std::size_t count, unsigned variety) {
  const char* const letters[] = {"a", "A", "b", "B", "\xC3\xA9", "\xC3\x89", ".", "", "z."};
  const auto text = [&] {
    std::string made = letters[random() % std::min(variety, 9u)];
    while (random() % 2) made += letters[random() % 9];
    return made;
  };
  std::vector<FileRecord> rows(count);
  for (FileRecord& row : rows) {
    row = {text(), static_cast<Ticks>(random() % variety), "/" + text() + "/",
           static_cast<std::int64_t>(random() % variety) - 1};
  }
  return rows;
}

ResultList list_of(const std::vector<FileRecord>& rows) {
  ResultList list;
  for (const FileRecord& row : rows) list.add_file_row(row);
  return list;
}

void expect_literal_order(const std::vector<FileRecord>& rows) {
  for (int key = 0; key <= sort_key_count; ++key) {
    ResultList list = list_of(rows);
    sort_results(list, static_cast<SortKey>(key));
    ASSERT_EQ(list.records(), literal_sort(rows, static_cast<SortKey>(key)))
        << rows.size() << " rows, key " << key;
  }
}

std::string names(const ResultList& list) {
  std::string line;
  for (const FileRecord& record : list.records()) line += record.filename + " ";
  return line;
}

TEST(ResultSort, EqualsTheLiteralShellSort) {
  std::mt19937 random(test_seed());
  for (std::size_t count = 0; count <= 200; ++count) {
    for (const unsigned variety : {2u, 9u})
      expect_literal_order(random_rows(random, count, variety));
  }
  expect_literal_order(random_rows(random, 1500, 40));
  // Of 2048 records every pass but the last keeps even and odd ones apart: where one kind goes
  // before the other, the last pass moves each of them far, and the sort takes its other way.
  std::vector<FileRecord> rows = random_rows(random, 2048, 9);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    rows[i].filedate = rows[i].filesize = static_cast<std::int64_t>((i % 2) * 1000 + i / 6);
    rows[i].filename = random() % 2 ? "same" : "SAME";
  }
  expect_literal_order(rows);
}

TEST(ResultSort, YieldsWhileItSortsALongList) {
  std::mt19937 random(1);
  ResultList list = list_of(random_rows(random, 20000, 1000));
  int yields = 0;
  sort_results(list, SortKey::type, [&] { ++yields; });
  EXPECT_GT(yields, 20);
}

TEST(SortCommand, SecondChoiceReversesUnlessAResortIsPending) {
  ResultList list = list_of({{"a", 0, "/", 1}, {"b", 0, "/", 2}, {"c", 0, "/", 3}});
  SortMenu menu;
  const auto click = [&](SortKey key) {
    apply_sort(menu, list, choose_sort(menu, list, key));
    return names(list) + (list.sort_descending ? "down" : "up");
  };
  EXPECT_EQ(click(SortKey::size), "c b a up");
  list.viewed_index = 0;
  EXPECT_EQ(click(SortKey::size), "a b c down");
  EXPECT_EQ(list.viewed_index, 2);
  EXPECT_EQ(click(SortKey::size), "c b a up");

  // A new search keeps a reversed order, and the next choice sorts instead of reversing.
  click(SortKey::size);
  list.add_file_row(FileRecord{"d", 0, "/", 4});
  sort_after_search(menu, list, {});
  EXPECT_EQ(names(list), "a b c d ");
  EXPECT_EQ(click(SortKey::size), "d c b a up");
  EXPECT_EQ(click(SortKey::size), "a b c d down");
  EXPECT_EQ(click(SortKey::name), "a b c d up");
}

}  // namespace
}  // namespace tallowmere
