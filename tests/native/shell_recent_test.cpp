#include "shell/recent_searches.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "engine/file_system.h"
#include "shell/settings.h"
#include "tests/support/memory_settings.h"
#include "tests/support/seed.h"

namespace tallowmere {
namespace {

SearchCriteria search_for(const std::string& words) {
  SearchCriteria search;
  search.criteria = words;
  search.path = search.drive = "C:";
  search.type_checked[0] = true;
  return search;
}

std::string words_of(const RecentSearches& recent) {
  std::string all;
  for (const SearchCriteria& entry : recent.entries()) all += entry.criteria + " ";
  return all;
}

/// What a start of the program makes of the list stored.
RecentSearches loaded_from(const std::string& stored) {
  MemorySettings store;
  store.save_setting("recent_searches", stored);
  SearchCriteria search;
  ShellState shell;
  load_settings(store, search, shell, {"C:\\Programs\\", {2024, 2, 29}, DateOrder::day_month_year});
  return shell.recent_searches;
}

std::string saved(const RecentSearches& recent) {
  MemorySettings store;
  ShellState shell;
  shell.recent_searches = recent;
  save_settings(store, {}, shell, {});
  return store.get_setting("recent_searches");
}

TEST(RecentSearches, TheSameSearchIsThereOnceAndTwentyAreKept) {
  RecentSearches recent;
  for (int i = 0; i < 22; ++i) recent.begun(search_for(std::to_string(i)));
  ASSERT_EQ(recent.entries().size(), 20u);
  // Neither the types that are not searched nor a proximity of no use make it another search.
  SearchCriteria again = search_for("5");
  again.path += path_separator;
  again.user_types[2] = "txt";
  again.prox_before = again.past_days = 7;
  recent.begun(again);
  recent.remove(1);
  EXPECT_TRUE(words_of(recent).starts_with("5 20 19 ") && words_of(recent).ends_with(" 3 2 "));

  recent.forget_all();
  std::vector<SearchCriteria> others(10, search_for("a"));
  others[1].match_case = others[2].hidden_files = others[3].online_files = true;
  others[4].search_subfolders = others[5].type_checked[0] = false;
  others[6].leave_out = "b";
  others[7].date_search = previous_days;
  others[8].search_type = others[9].search_type = search_near;
  others[9].prox_after = 1;
  for (const SearchCriteria& other : others) recent.begun(other);
  EXPECT_EQ(recent.entries().size(), others.size());
}

TEST(RecentSearches, WhateverTheyHoldSurvivesARestart) {
  std::mt19937 random(test_seed());
  const auto below = [&](int end) {
    return static_cast<int>(random() % static_cast<unsigned>(end));
  };
  const auto any = [&](std::string_view characters) {
    std::string made = "x";
    for (int left = below(6); left > 0; --left) made += characters[random() % characters.size()];
    return made + "é";
  };
  for (int round = 0; round < 200; ++round) {
    RecentSearches recent;
    for (int i = below(22); i > 0; --i) {
      SearchCriteria search = search_for(std::to_string(i) + any("%3B;=|\n\x7F "));
      search.path = "C:" + any("%;=|\\/");
      search.leave_out = any("*?;%");
      search.search_type = below(4);
      search.match_case = below(2) != 0;
      search.type_checked[0] = search.type_checked[3] = below(2) != 0;
      search.user_types[3] = any("%;=?3D");
      search.date_search = below(5);
      search.past_days = below(100);
      search.from_date = {1950 + below(90), 1 + below(12), 1 + below(28)};
      search.to_date = {2001, 1, 2};
      search.s_year = search.s_month_year = 1950 + below(90);
      search.s_month = 1 + below(12);
      search.prox_before = below(1000);
      recent.begun(search);
    }
    RecentSearches back = loaded_from(saved(recent));
    ASSERT_EQ(words_of(back), words_of(recent));
    for (const SearchCriteria& search : recent.entries()) back.begun(search);
    ASSERT_EQ(back.entries().size(), recent.entries().size()) << "one came back as another";
  }
}

TEST(RecentSearches, AnythingStoredIsTakenAsFarAsItCan) {
  const std::string megabyte(1 << 20, 'x');
  EXPECT_EQ(words_of(loaded_from("||criteria=no folder|x|path=C:\\;;=;criteria=a%3Bb%%4%G0%00%41;x;"
                                 "criteria=z;search_type=9;date_search=-1|path=D:;criteria=c%")),
            "a;b%%4%G0%00%41 c% ");
  EXPECT_EQ(loaded_from(megabyte).entries().size(), 0u);
  EXPECT_LT(loaded_from("path=C:;criteria=" + megabyte).entries()[0].criteria.size(), 32'000u);
  std::string many;
  for (int i = 0; i < 50'000; ++i) many += "path=C:;criteria=" + std::to_string(i) + "|";
  EXPECT_TRUE(words_of(loaded_from(many)).ends_with(" 18 19 "));

  // What has no room is forgotten, and no other with it.
  RecentSearches recent;
  for (const char* words : {"a", "b"}) recent.begun(search_for(words + std::string(20'000, 'x')));
  recent.begun(search_for(megabyte.substr(0, criteria_limit)));
  recent.begun(search_for("c"));
  EXPECT_LE(saved(recent).size(), 32'000u);
  EXPECT_EQ(words_of(loaded_from(saved(recent))), "c b" + std::string(20'000, 'x') + " ");
}

TEST(RecentSearches, AChoiceIsTakenBackExceptWhatTheUserHasChangedSince) {
  SearchCriteria search = search_for("mine");
  SearchCriteria first = search_for("one");
  first.path = "D:\\one";
  first.date_search = previous_days;
  SearchCriteria second = search_for("two");
  second.path = "D:\\two";
  RecentChoice choice;
  choice.choose(first, search);
  EXPECT_EQ(search.path + search.criteria + std::to_string(search.date_search), "D:\\onemine4");
  search.path += path_separator;  // the same
  search.past_days = 3;
  choice.choose(second, search);
  EXPECT_EQ(search.past_days, 0);
  choice.take_back(search);
  EXPECT_EQ(search.path + std::to_string(search.past_days), "C:3");
  EXPECT_EQ(search.date_search, previous_days);
  choice.choose(second, search);
  search.leave_out = "b";
  choice.take_back(search);
  EXPECT_EQ(search.path + std::to_string(search.date_search), "D:\\two4");
}

TEST(RecentSearches, OneLineTellsASearch) {
  SearchCriteria search = search_for("big\tdog\r\n\u0085" + std::string(300, 'x'));
  search.path = "C:\\a" + std::string(32'000, 'b') + "c";
  search.match_case = true;
  const std::string line = recent_line(search, iso_date).text();
  EXPECT_TRUE(line.starts_with("big dog   xx")) << line;
  EXPECT_NE(line.find("x\u2026 \u00B7 Single Phrase, Match Case \u00B7 C:\\abb"), line.npos)
      << line;
  EXPECT_TRUE(
      line.ends_with(std::string("bbc") + path_separator + "+ \u00B7 All Files \u00B7 All Dates"));
  EXPECT_LT(line.size(), 600u);
}

}  // namespace
}  // namespace tallowmere
