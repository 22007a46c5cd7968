#include "shell/settings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/memory_settings.h"

namespace tallowmere {
namespace {

using Values = std::vector<std::pair<std::string, std::string>>;

const std::string megabyte(1 << 20, '9');
const std::string highest = std::to_string(std::numeric_limits<int>::max());

struct Loaded {
  SearchCriteria search;
  ShellState shell;
};

Loaded load(const Values& values) {
  MemorySettings store;
  for (const auto& [key, value] : values) store.save_setting(key, value);
  Loaded loaded;
  load_settings(store, loaded.search, loaded.shell,
                {"C:\\Programs\\Tallowmere", {2024, 2, 29}, DateOrder::day_month_year});
  return loaded;
}

MemorySettings saved(const Loaded& loaded) {
  MemorySettings store;
  save_settings(store, loaded.search, loaded.shell, loaded.shell.placement);
  return store;
}

/// What a start and an end of the program make of stored values, each alone in the store.
void expect_kept(const std::string& key, const Values& cases) {
  for (const auto& [stored, expected] : cases) {
    EXPECT_EQ(saved(load({{key, stored}})).get_setting(key), expected)
        << key << " " << stored.substr(0, 25);
  }
}

/// Takes "key=value|key=value".
Values values_of(const std::string& text) {
  Values values;
  std::istringstream stream(text);
  for (std::string key, value;
       std::getline(stream, key, '=') && std::getline(stream, value, '|');) {
    values.emplace_back(key, value);
  }
  return values;
}

void expect_saved(const Loaded& loaded, const Values& values) {
  MemorySettings store = saved(loaded);
  for (const auto& [key, value] : values) EXPECT_EQ(store.get_setting(key), value) << key;
}

TEST(LenientValues, Numbers) {
  for (const char* none : {"", " ", "abc", "-", ".", "e5", "nan", "inf", "0x10"}) {
    EXPECT_EQ(lenient_number(none), 0) << none;
  }
  EXPECT_EQ(lenient_number("8.25"), 8.25);
  EXPECT_TRUE(std::isfinite(lenient_number(megabyte)));
  constexpr int most = std::numeric_limits<int>::max();
  const std::pair<std::string, int> integers[] = {
      {"12abc", 12}, {"  -7", -7},         {"\t+3", 3},          {"1,5", 1},
      {"1.5", 2},    {"2.5", 2},           {"-2.5", -2},         {"1.25e2x", 125},
      {"1.9", 2},    {"2147483648", most}, {megabyte, most},     {"-1e999", -most - 1},
      {"0.5", 0},    {"0." + megabyte, 1}, {"1e-9999999999", 0}, {"9e9999999999", most}};
  for (const auto& [text, integer] : integers) {
    EXPECT_EQ(lenient_integer(text), integer) << text.substr(0, 20);
  }
}

TEST(LenientValues, Dates) {
  const auto read = [](std::string_view text, DateOrder order) {
    Date date{1, 1, 1};
    if (lenient_date(text, order, date)) return iso_date(date);
    return std::string(date.year == 1 ? "none" : "changed");
  };
  using enum DateOrder;
  EXPECT_EQ(read("2023-04-05", month_day_year), "2023-04-05");
  EXPECT_EQ(read("5/4/2023", day_month_year), "2023-04-05");
  EXPECT_EQ(read("23/4/5", year_month_day), "2023-04-05");
  EXPECT_EQ(read("4-5-30", month_day_year), "1930-04-05");
  EXPECT_EQ(read("4/5/29 10:15:00", month_day_year), "2029-04-05");
  EXPECT_EQ(read("2023年4月5日", day_month_year), "2023-04-05");
  for (const std::string& text :
       {std::string(), std::string("2023-02-29"), std::string("0000-01-01"),
        std::string("2023-13-01"), std::string("2023-04"), std::string("4-5-20231"), megabyte}) {
    EXPECT_EQ(read(text, month_day_year), "none") << text.substr(0, 20);
  }
}

TEST(Settings, AnEmptyStoreGivesTheFirstRun) {
  const Loaded loaded = load({{"user_type2", "zip"}, {"user_type6", "md"}});
  EXPECT_EQ(loaded.search.drive + loaded.search.user_types[0], "C:\\*");
  expect_saved(
      loaded,
      values_of("path=C:\\|date_search=0|past_days=0|from_date=2024-02-29|to_date=2024-02-29|"
                "s_year=2024|s_month=2|s_month_year=2024|user_type2=doc|user_type5=w??|"
                "user_type6=md|checked=NYNNNNNYNNNYNNNYYYN|criteria=|search_type=2|prox_before=0|"
                "unicode_text=N|leave_out=|hidden_files=N|online_files=N|font_name=Courier "
                "New|font_size=10|left=0|width=0"));
}

TEST(Settings, CheckedSwitchesOnOnlyByYAndOffOnlyByN) {
  expect_kept("checked", {{"YYYYYYYYYYNNNNNYYYY", "YYYYYYYYNYNNNNNYYYY"},
                          {"NNNNNNNNNNYYNNNNNNN", "NNNNNNNNNNYNNNNNNNN"},
                          // Positions count characters, not bytes.
                          {"éNNNNNNNNNNNNNYNNNN", "NNNNNNNNNNNNNNYNNNN"},
                          {"x", "NNNNNNNNNNNNNNNYYYN"},
                          {std::string(1 << 20, 'n'), "NNNNNNNNNNNNNNNYYYN"}});
}

TEST(Settings, StoredValuesAreTakenAsFarAsTheyCan) {
  expect_kept("path", {{"\\\\server\\share\\x", "\\\\server\\share\\x"}, {megabyte, "C:\\"}});
  expect_kept("criteria", {{megabyte, megabyte.substr(0, criteria_limit)}});
  expect_kept("leave_out", {{megabyte, megabyte.substr(0, leave_out_limit)}});
  for (const char* type : {"7", "-1", "4", "1.9", "3.5", "9999999999"}) {
    expect_kept("search_type", {{type, "2"}});
  }
  expect_kept("search_type", {{"0", "0"}, {"3", "3"}, {"x", "0"}});
  expect_kept("font_name", {{megabyte, "Courier New"}});
  expect_kept("font_size", {{"0.5", "10"}, {"2161", "10"}, {"1e999", "10"}});
  expect_kept("list_share", {{"3000", "3000"}, {"-1", "0"}, {"x", "0"}, {megabyte, "10000"}});
  for (const char* column : {"column_width1", "column_width4"}) {
    expect_kept(column, {{"1500", "1500"}, {"-1", "0"}, {"x", "0"}, {megabyte, "100000"}});
  }
  expect_kept("left", {{"12.5", "12"}, {"-1e999", "-2147483648"}, {megabyte, highest}});

  expect_kept("date_search", {{"4", "4"}, {"5", "0"}, {"-1", "0"}, {megabyte, "0"}});
  expect_kept("past_days", {{"-7", "0"}, {"10000", "9999"}, {megabyte, "9999"}});
  expect_kept("from_date", {{"31/1/2023", "2023-01-31"}, {"31/2/2023", "2024-02-29"}});
  expect_kept("s_month", {{"12", "12"}, {"13", "2"}, {"0", "2"}});
  for (const char* year : {"s_year", "s_month_year"}) {
    expect_kept(year, {{"3000", "3000"}, {"3001", "2024"}, {"1900", "1900"}, {"1899", "2024"}});
  }

  const auto type = [](const std::string& stored) {
    return load({{"user_type3", stored}, {"checked", "N"}}).search.user_types[3];
  };
  for (const char bad : std::string_view("*/:<>\\|\x1F\t\0", 10)) {
    EXPECT_EQ(type(std::string("t") + bad), "") << static_cast<int>(bad);
  }
  EXPECT_EQ(type("w?? .}~\x7Fé中\xFF"), "w?? .}~\x7Fé中\xFF");
  EXPECT_EQ(type(std::string(255, 'x')) + type(std::string(256, 'x')), std::string(255, 'x'));
}

TEST(Settings, TheLastFoldersAreKeptTheLatestFirst) {
  const auto listed = [](const RecentFolders& recent) {
    std::string all;
    for (const std::string& folder : recent.folders()) all += folder + "|";
    return all;
  };
  Loaded loaded =
      load(values_of("recent_folder9=C:\\c|recent_folder2=C:\\A/|recent_folder10=c:\\a|"
                     "recent_folder11=C:\\none"));
  EXPECT_EQ(listed(loaded.shell.recent_folders), "C:\\A/|C:\\c|");
  loaded = load({{"recent_folder1", megabyte}, {"recent_folder3", "C:\\b"}});
  EXPECT_EQ(listed(loaded.shell.recent_folders), "C:\\b|");
  for (int i = 1; i <= 12; ++i) loaded.shell.recent_folders.add("C:\\" + std::to_string(i));
  loaded.shell.recent_folders.add("C:\\5");
  MemorySettings store = saved(loaded);
  EXPECT_EQ(store.get_setting("recent_folder1") + store.get_setting("recent_folder10"),
            "C:\\5C:\\3");
  RecentFolders again;
  again.load(store);
  EXPECT_EQ(listed(again), listed(loaded.shell.recent_folders));
}

TEST(Settings, EverythingSurvivesARestart) {
  const Values values = values_of(
      "path=D:\\Café\\|date_search=1|past_days=30|from_date=1999-12-31|to_date=2024-02-29|"
      "s_year=2001|s_month=11|s_month_year=2002|user_type1=c|user_type2=w??|user_type3=|"
      "user_type4=é|user_type5=tar.gz|user_type6=|criteria= a \"b|search_type=3|prox_before=0|"
      "prox_after=250|font_name=Consolas|font_size=8.25|left=100|top=200|height=7000|width=9700|"
      "checked=NYNNNNYYNYNNNYNYNNY|unicode_text=Y|leave_out=.git; *.bak|hidden_files=Y|"
      "online_files=Y|list_share=4000|column_width1=1|column_width2=0|column_width3=900|"
      "column_width4=100000");
  Loaded loaded = load(values);
  EXPECT_EQ(loaded.search.drive + loaded.search.user_types[4], "D:\\é");
  EXPECT_EQ(loaded.shell.sort_key, SortKey::folder);
  EXPECT_TRUE(loaded.search.match_case && loaded.shell.minimize_on && loaded.shell.sound_on &&
              !loaded.shell.find_on_launch);
  EXPECT_EQ(loaded.shell.placement, (TwipRect{100, 200, 9700, 7000}));
  expect_saved(loaded, values);

  MemorySettings store = saved(loaded);
  loaded.search.criteria.clear();
  save_settings(store, loaded.search, loaded.shell, std::nullopt);
  EXPECT_EQ(store.get_setting("criteria"), "");
  EXPECT_EQ(store.get_setting("left"), "100") << "a maximised window keeps the placement before";
}

}  // namespace
}  // namespace tallowmere
