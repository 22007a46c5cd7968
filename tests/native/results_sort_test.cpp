#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "engine/letter_case.h"
#include "results/result_sort.h"
#include "results/sort_command.h"

namespace tallowmere {
namespace {

/// Whether `b`, now behind `a`, must come before it.
bool out_of_order(const FileRecord& a, const FileRecord& b, SortKey key) {
  int order = 0;
  switch (key) {
    case SortKey::date:
      order = a.filedate < b.filedate ? 1 : a.filedate > b.filedate ? -1 : 0;
      break;
    case SortKey::size:
      order = a.filesize < b.filesize ? 1 : a.filesize > b.filesize ? -1 : 0;
      break;
    case SortKey::folder:
      order = lower_case(a.filepath).compare(lower_case(b.filepath));
      break;
    case SortKey::type: {
      const auto type = [](const std::string& name) {
        const std::size_t dot = name.find('.');
        return dot == std::string::npos ? name : name.substr(dot + 1);
      };
      order = lower_case(type(a.filename)).compare(lower_case(type(b.filename)));
      break;
    }
    default:
      break;
  }
  return order != 0 ? order > 0 : lower_case(a.filename) > lower_case(b.filename);
}

std::ptrdiff_t half_to_even(std::ptrdiff_t number) {
  return (number + (number % 4 == 3)) / 2;
}

/// The Shell sort as it is defined, inner walk down to index 0 and all.
void literal_sort(std::vector<FileRecord>& rows, SortKey key) {
  const std::ptrdiff_t count = std::ssize(rows);
  for (std::ptrdiff_t gap = half_to_even(count); gap >= 1; gap = half_to_even(gap)) {
    for (std::ptrdiff_t i = gap; i < count; ++i) {
      for (std::ptrdiff_t j = i - gap; j >= 0; j -= gap) {
        if (out_of_order(rows[j], rows[j + gap], key)) std::swap(rows[j], rows[j + gap]);
      }
    }
  }
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

void expect_literal_order(std::vector<FileRecord> rows, const std::string& what) {
  for (int key = 0; key <= sort_key_count; ++key) {
    ResultList list = list_of(rows);
    std::vector<FileRecord> expected = rows;
    literal_sort(expected, static_cast<SortKey>(key));
    sort_results(list, static_cast<SortKey>(key));
    ASSERT_EQ(list.records(), expected) << what << " key " << key;
  }
}

bool has_names(const ResultList& list, const std::vector<std::string>& names) {
  std::vector<std::string> found;
  for (const FileRecord& record : list.records()) found.push_back(record.filename);
  return found == names;
}

TEST(ResultSort, EqualsTheLiteralShellSortForEverySmallSize) {
  const unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  for (std::size_t count = 0; count <= 200; ++count) {
    for (const unsigned variety : {2u, 9u}) {
      expect_literal_order(random_rows(random, count, variety),
                           "seed " + std::to_string(seed) + " count " + std::to_string(count));
    }
  }
}

TEST(ResultSort, EqualsTheLiteralShellSortForLongLists) {
  const unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  const std::string what = "seed " + std::to_string(seed);
  expect_literal_order(random_rows(random, 1500, 40), what);
  // Of 2048 records every pass but the last keeps even and odd ones apart: where one kind goes
  // before the other, the last pass moves each of them far, and the sort takes its other way.
  std::vector<FileRecord> rows = random_rows(random, 2048, 9);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    rows[i].filesize = static_cast<std::int64_t>((i % 2) * 1000 + i / 6);
    rows[i].filedate = rows[i].filesize;
    rows[i].filename = random() % 2 ? "same" : "SAME";
  }
  expect_literal_order(rows, what + " apart");
}

TEST(ResultSort, YieldsWhileItSortsALongList) {
  std::mt19937 random(1);
  ResultList list = list_of(random_rows(random, 20000, 1000));
  int yields = 0;
  sort_results(list, SortKey::type, [&] { ++yields; });
  EXPECT_GT(yields, 20);
}

TEST(ResultSort, DirectionsAndTies) {
  ResultList list = list_of({{"C.txt", 5, "/b/", 10},
                             {"b.txt", 5, "/B/", 10},
                             {"a.tar.gz", 0, "/a/", 9},
                             {"readme", 7, "/c/", 11}});
  sort_results(list, SortKey::size);
  EXPECT_TRUE(has_names(list, {"readme", "b.txt", "C.txt", "a.tar.gz"}));
  sort_results(list, SortKey::date);  // an unknown date is the earliest
  EXPECT_TRUE(has_names(list, {"readme", "b.txt", "C.txt", "a.tar.gz"}));
  sort_results(list, SortKey::folder);
  EXPECT_TRUE(has_names(list, {"a.tar.gz", "b.txt", "C.txt", "readme"}));
  sort_results(list, SortKey::type);  // readme, tar.gz, txt
  EXPECT_TRUE(has_names(list, {"readme", "a.tar.gz", "b.txt", "C.txt"}));
}

TEST(SortCommand, SecondChoiceReversesUnlessAResortIsPending) {
  ResultList list = list_of({{"a", 0, "/", 1}, {"b", 0, "/", 2}, {"c", 0, "/", 3}});
  SortMenu menu;
  const auto click = [&](SortKey key) {
    const SortAction action = choose_sort(menu, list, key);
    apply_sort(menu, list, action);
    return action;
  };
  EXPECT_EQ(menu.sort_type(), SortKey::none);
  EXPECT_EQ(click(SortKey::size), SortAction::sort);
  EXPECT_TRUE(has_names(list, {"c", "b", "a"}));
  list.viewed_index = 0;
  EXPECT_EQ(click(SortKey::size), SortAction::reverse);
  EXPECT_TRUE(has_names(list, {"a", "b", "c"}));
  EXPECT_TRUE(list.sort_descending);
  EXPECT_EQ(list.viewed_index, 2);
  EXPECT_EQ(click(SortKey::size), SortAction::reverse);
  EXPECT_FALSE(list.sort_descending);

  // A new search keeps a reversed order, and the next choice sorts afresh.
  click(SortKey::size);
  list.add_file_row(FileRecord{"d", 0, "/", 4});
  sort_after_search(menu, list, {});
  EXPECT_TRUE(has_names(list, {"a", "b", "c", "d"}));
  EXPECT_TRUE(list.sort_descending && list.resort_pending);
  EXPECT_EQ(click(SortKey::size), SortAction::sort);
  EXPECT_TRUE(has_names(list, {"d", "c", "b", "a"}));
  EXPECT_FALSE(list.sort_descending || list.resort_pending);

  click(SortKey::size);
  EXPECT_EQ(click(SortKey::name), SortAction::sort);
  EXPECT_FALSE(list.sort_descending);
  EXPECT_EQ(menu.sort_type(), SortKey::name);
}

TEST(SortCommand, OneRowOnlyMovesTheCheckMark) {
  ResultList list = list_of({{"a", 0, "/", 1}});
  SortMenu menu;
  menu.check(SortKey::date);
  EXPECT_EQ(choose_sort(menu, list, SortKey::type), SortAction::none);
  EXPECT_EQ(menu.sort_type(), SortKey::type);
  EXPECT_EQ(choose_sort(menu, list, SortKey::type), SortAction::none);
  EXPECT_TRUE(list.sort_descending);
}

}  // namespace
}  // namespace tallowmere
