#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "engine/file_type_rule.h"
#include "shell/layout.h"
#include "shell/settings.h"
#include "tests/support/memory_settings.h"

namespace tallowmere {
namespace {

const SettingsContext context{"C:\\Programs\\Tallowmere", {2024, 2, 29}, DateOrder::day_month_year};
const std::string megabyte(1 << 20, '9');

struct Loaded {
  SearchCriteria search;
  ShellState shell;
};

Loaded load(const std::vector<std::pair<std::string, std::string>>& values) {
  MemorySettings store;
  for (const auto& [key, value] : values) store.save_setting(key, value);
  Loaded loaded;
  load_settings(store, loaded.search, loaded.shell, context);
  return loaded;
}

std::array<bool, file_type_slots> only_slot(int slot) {
  std::array<bool, file_type_slots> slots{};
  slots[slot] = true;
  return slots;
}

TEST(LenientValues, Numbers) {
  EXPECT_EQ(lenient_integer("12abc"), 12);
  EXPECT_EQ(lenient_integer("  -7"), -7);
  EXPECT_EQ(lenient_integer("+3"), 3);
  for (const char* none : {"", " ", "abc", "-", ".", "e5", "nan", "inf", "0x10"}) {
    EXPECT_EQ(lenient_number(none), 0) << none;
  }
  EXPECT_EQ(lenient_integer("0.5"), 0);
  EXPECT_EQ(lenient_integer("1.5"), 2);
  EXPECT_EQ(lenient_integer("2.5"), 2);
  EXPECT_EQ(lenient_integer("-1.5"), -2);
  EXPECT_EQ(lenient_integer("-2.5"), -2);
  EXPECT_EQ(lenient_integer("1.9"), 2);
  EXPECT_EQ(lenient_integer("1.25e2x"), 125);
  EXPECT_EQ(lenient_integer("1,5"), 1);
  EXPECT_DOUBLE_EQ(lenient_number("8.25"), 8.25);
  EXPECT_EQ(lenient_integer("2147483648"), std::numeric_limits<int>::max());
  EXPECT_EQ(lenient_integer("-1e999"), std::numeric_limits<int>::min());
  EXPECT_EQ(lenient_integer("1e99999999999999999999"), std::numeric_limits<int>::max());
  EXPECT_EQ(lenient_integer("1e-99999999999999999999"), 0);
  EXPECT_TRUE(std::isfinite(lenient_number(megabyte)));
  EXPECT_EQ(lenient_integer(megabyte), std::numeric_limits<int>::max());
  EXPECT_EQ(lenient_integer("0." + std::string(1 << 20, '0') + "9"), 0);
}

TEST(LenientValues, Dates) {
  const auto read = [](const std::string& text, DateOrder order) {
    Date date{1, 1, 1};
    return lenient_date(text, order, date) ? iso_date(date) : "kept " + std::to_string(date.year);
  };
  EXPECT_EQ(read("2023-04-05", DateOrder::month_day_year), "2023-04-05");
  EXPECT_EQ(read("5/4/2023", DateOrder::day_month_year), "2023-04-05");
  EXPECT_EQ(read("5/4/2023", DateOrder::month_day_year), "2023-05-04");
  EXPECT_EQ(read(" 5. 4. 2023 ", DateOrder::day_month_year), "2023-04-05");
  EXPECT_EQ(read("23/4/5", DateOrder::year_month_day), "2023-04-05");
  EXPECT_EQ(read("4-5-30", DateOrder::month_day_year), "1930-04-05");
  EXPECT_EQ(read("4/5/2023 10:15:00", DateOrder::month_day_year), "2023-04-05");
  EXPECT_EQ(read("2023\xE5\xB9\xB4"
                 "4\xE6\x9C\x88"
                 "5\xE6\x97\xA5",
                 DateOrder::month_day_year),
            "2023-04-05");
  for (const std::string& bad :
       {std::string(), std::string("today"), std::string("2023-02-29"), std::string("0000-01-01"),
        std::string("2023-13-01"), std::string("2023-04"), std::string("4-5-20231"),
        std::string("5 Apr 2023"), megabyte, std::string(1 << 20, '-')}) {
    EXPECT_EQ(read(bad, DateOrder::month_day_year), "kept 1") << bad.substr(0, 20);
  }
}

TEST(Settings, FileTypeRule) {
  for (const char32_t bad : std::u32string_view(U"*/:<>\\|\x1F\t")) {
    EXPECT_FALSE(is_valid_type_char(bad)) << static_cast<int>(bad);
  }
  for (const char32_t good : std::u32string_view(U"? .}~\x7F\xE9\x4E2D")) {
    EXPECT_TRUE(is_valid_type_char(good)) << static_cast<int>(good);
  }
  EXPECT_TRUE(is_valid_file_type(""));
  EXPECT_TRUE(is_valid_file_type("w??"));
  EXPECT_TRUE(is_valid_file_type("\xC3\xA9\xFF"));
  EXPECT_FALSE(is_valid_file_type("t:t"));
  EXPECT_FALSE(is_valid_file_type(std::string_view("t\0t", 3)));
}

TEST(Settings, AnEmptyStoreGivesTheFirstRun) {
  const auto [search, shell] = load({{"user_type2", "zip"}, {"user_type6", "md"}});
  EXPECT_EQ(search.path, "C:\\");
  EXPECT_EQ(search.drive, "C:\\");
  EXPECT_EQ(search.date_search, all_dates);
  EXPECT_EQ(search.past_days, 0);
  EXPECT_EQ(iso_date(search.from_date), "2024-02-29");
  EXPECT_EQ(search.to_date, search.from_date);
  EXPECT_EQ(search.s_year * 100 + search.s_month, 202402);
  EXPECT_EQ(search.s_month_year, 2024);
  const std::array<std::string, file_type_slots> types{"*",   "txt", "doc", "htm",
                                                       "log", "w??", "md"};
  EXPECT_EQ(search.user_types, types);
  EXPECT_EQ(search.type_checked, only_slot(1));
  EXPECT_TRUE(search.search_subfolders && !search.match_case);
  EXPECT_FALSE(search.prox_all);
  EXPECT_EQ(search.criteria, "");
  EXPECT_EQ(search.search_type, search_phrase);
  EXPECT_EQ(search.prox_before + search.prox_after, 0);
  EXPECT_EQ(shell.sort_key, SortKey::date);
  EXPECT_TRUE(shell.sound_on && shell.find_on_launch && !shell.minimize_on);
  EXPECT_EQ(shell.font_name, "Courier New");
  EXPECT_EQ(shell.font_size, 10);
  EXPECT_EQ(shell.placement, TwipRect{});
}

TEST(Settings, CheckedSwitchesOnOnlyByYAndOffOnlyByN) {
  Loaded on = load({{"checked", "YYYYYYYYYYNNNNNYYYY"}});
  EXPECT_TRUE(on.search.type_checked[0] && on.search.type_checked[6]);
  EXPECT_TRUE(on.search.search_subfolders && on.shell.minimize_on && on.search.prox_all);
  EXPECT_TRUE(on.shell.sound_on && !on.search.match_case && on.shell.find_on_launch);
  EXPECT_EQ(on.shell.sort_key, SortKey::none);

  Loaded off = load({{"checked", "NNNNNNNNNNYYNNNNNNN"}});
  EXPECT_EQ(off.search.type_checked, (std::array<bool, file_type_slots>{}));
  EXPECT_FALSE(off.search.search_subfolders || off.shell.minimize_on || off.search.prox_all);
  EXPECT_FALSE(off.shell.sound_on || !off.search.match_case || off.shell.find_on_launch);
  EXPECT_TRUE(off.search.match_case);
  EXPECT_EQ(off.shell.sort_key, SortKey::name);

  // Other characters, also wide ones, and missing ones leave the start-up values.
  for (const std::string& text : {std::string("x"), std::string("yn yn\xC3\xA9nnnnnnnnnnnnny"),
                                  std::string(19, '?'), std::string(1 << 20, 'n')}) {
    Loaded kept = load({{"checked", text}});
    EXPECT_EQ(kept.search.type_checked, (std::array<bool, file_type_slots>{}));
    EXPECT_FALSE(kept.search.search_subfolders || kept.shell.minimize_on || kept.search.prox_all);
    EXPECT_TRUE(kept.shell.sound_on && !kept.search.match_case && kept.shell.find_on_launch);
    EXPECT_EQ(kept.shell.sort_key, SortKey::none);
  }
  // Positions count characters, not bytes.
  EXPECT_EQ(load({{"checked", "\xC3\xA9NNNNNNNNNNNNNYNNNN"}}).shell.sort_key, SortKey::type);
}

TEST(Settings, StoredValuesAreTakenAsFarAsTheyCan) {
  const auto [search, shell] = load({{"path", "\\\\server\\share\\x"},
                                     {"from_date", "31/1/2023"},
                                     {"to_date", "31/2/2023"},
                                     {"user_type3", "t:t"},
                                     {"user_type4", "w??"},
                                     {"checked", "N"},
                                     {"criteria", "  \"big dog\" cat "},
                                     {"search_type", "1.9"},
                                     {"prox_before", "5000"},
                                     {"prox_after", megabyte},
                                     {"font_name", megabyte},
                                     {"font_size", "1e999"},
                                     {"left", "12.5"},
                                     {"top", "-1e999"},
                                     {"height", megabyte},
                                     {"width", "nan"}});
  EXPECT_EQ(search.drive, "\\\\s");
  EXPECT_EQ(iso_date(search.from_date), "2023-01-31");
  EXPECT_EQ(iso_date(search.to_date), "2024-02-29");
  EXPECT_EQ(search.user_types[3], "");
  EXPECT_EQ(search.user_types[4], "w??");
  EXPECT_EQ(search.criteria, "  \"big dog\" cat ");
  EXPECT_EQ(search.search_type, search_phrase);
  EXPECT_EQ(search.prox_before, 5000);
  EXPECT_EQ(search.prox_after, std::numeric_limits<int>::max());
  EXPECT_EQ(shell.font_name, "Courier New");
  EXPECT_EQ(shell.font_size, 10);
  EXPECT_EQ(shell.placement.left, 12);
  EXPECT_EQ(shell.placement.width, 0);
  const TwipRect placed = place_window(shell.placement, {15360, 11520}, {10200, 7800}, 0);
  EXPECT_EQ(placed, (TwipRect{12, 1860, 10200, 7800}));
  for (const auto& [stored, expected] : std::vector<std::pair<std::string, int>>{
           {"0", 0}, {"3", 3}, {"7", 2}, {"-1", 2}, {"", 2}, {"x", 0}, {"3.5", 2}, {megabyte, 2}}) {
    EXPECT_EQ(load({{"search_type", stored}}).search.search_type, expected) << stored.substr(0, 9);
  }
}

TEST(Settings, DatesThatNoSearchCanUseAreReplaced) {
  const auto read = [](const std::string& key, const std::string& stored) {
    const SearchCriteria search = load({{key, stored}}).search;
    const std::map<std::string, int> numbers{{"date_search", search.date_search},
                                             {"past_days", search.past_days},
                                             {"s_year", search.s_year},
                                             {"s_month", search.s_month},
                                             {"s_month_year", search.s_month_year}};
    return numbers.at(key);
  };
  for (const auto& [key, stored, expected] :
       std::vector<std::tuple<const char*, std::string, int>>{{"date_search", "4", 4},
                                                              {"date_search", "5", 0},
                                                              {"date_search", "-1", 0},
                                                              {"date_search", megabyte, 0},
                                                              {"past_days", "-7", 0},
                                                              {"past_days", "10000", 9999},
                                                              {"past_days", megabyte, 9999},
                                                              {"s_month", "12", 12},
                                                              {"s_month", "13", 2},
                                                              {"s_month", "0", 2},
                                                              {"s_year", "3000", 3000},
                                                              {"s_year", "1899", 2024},
                                                              {"s_month_year", "-5", 2024},
                                                              {"s_month_year", megabyte, 2024},
                                                              {"s_month_year", "1900", 1900},
                                                              {"s_year", "3001", 2024}}) {
    EXPECT_EQ(read(key, stored), expected) << key << " " << stored.substr(0, 9);
  }
}

TEST(Settings, EverythingSurvivesARestart) {
  const std::vector<std::pair<std::string, std::string>> values{{"path", "D:\\Caf\xC3\xA9\\"},
                                                                {"date_search", "1"},
                                                                {"past_days", "30"},
                                                                {"from_date", "1999-12-31"},
                                                                {"to_date", "2024-02-29"},
                                                                {"s_year", "2001"},
                                                                {"s_month", "11"},
                                                                {"s_month_year", "2002"},
                                                                {"user_type1", "c"},
                                                                {"user_type2", "w??"},
                                                                {"user_type3", ""},
                                                                {"user_type4", "\xC3\xA9"},
                                                                {"user_type5", "tar.gz"},
                                                                {"user_type6", ""},
                                                                {"criteria", " a \"b"},
                                                                {"search_type", "3"},
                                                                {"prox_before", "0"},
                                                                {"prox_after", "250"},
                                                                {"font_name", "Consolas"},
                                                                {"font_size", "8.25"},
                                                                {"left", "100"},
                                                                {"top", "200"},
                                                                {"height", "7000"},
                                                                {"width", "9700"},
                                                                {"checked", "NYNNNNYYNYNNNYNYNNY"}};
  Loaded loaded = load(values);
  EXPECT_EQ(loaded.search.drive, "D:\\");
  EXPECT_EQ(iso_date(loaded.search.from_date), "1999-12-31");
  EXPECT_EQ(loaded.search.user_types[4], "\xC3\xA9");
  EXPECT_EQ(loaded.shell.sort_key, SortKey::folder);
  EXPECT_TRUE(loaded.search.match_case && loaded.shell.minimize_on);
  EXPECT_FALSE(loaded.shell.find_on_launch);
  EXPECT_EQ(loaded.shell.placement, (TwipRect{100, 200, 9700, 7000}));

  MemorySettings store;
  save_settings(store, loaded.search, loaded.shell, loaded.shell.placement);
  for (const auto& [key, value] : values) EXPECT_EQ(store.get_setting(key), value) << key;

  loaded.search.criteria.clear();
  save_settings(store, loaded.search, loaded.shell, std::nullopt);
  EXPECT_EQ(store.get_setting("criteria"), "");
  EXPECT_EQ(store.get_setting("left"), "100") << "a maximised window keeps the placement before";
}

TEST(Settings, TextsThatNobodyCanUseDoNotComeIn) {
  const Loaded loaded = load({{"path", megabyte},
                              {"criteria", megabyte},
                              {"user_type1", megabyte},
                              {"user_type2", std::string(255, 'x')},
                              {"checked", "Y"}});
  EXPECT_EQ(loaded.search.path, "C:\\");
  EXPECT_EQ(loaded.search.criteria, megabyte.substr(0, criteria_limit));
  EXPECT_EQ(loaded.search.user_types[1], "");
  EXPECT_EQ(loaded.search.user_types[2], std::string(255, 'x'));
}

TEST(Geometry, PlaceWindow) {
  const TwipSize screen{15000, 11000};
  const TwipSize design{10000, 8000};
  const auto place = [&](const TwipRect& stored) {
    return place_window(stored, screen, design, 105);
  };
  const TwipRect centred{2500, 1500, 10000, 8000};
  EXPECT_EQ(place({}), centred);
  const TwipRect good{1, 3000, 14999, 600};
  EXPECT_EQ(place(good), good);
  EXPECT_EQ(place({2, 10401, 14999, 600}), (TwipRect{0, 5200, 14999, 600}));
  EXPECT_EQ(place({-5, 0, 599, 11001}), centred);
  EXPECT_EQ(place({-200, -105, 15300, 11200}), centred);
  EXPECT_EQ(place_window({-105, 0, 5000, 11105}, screen, design, 0),
            (TwipRect{5000, 1500, 5000, 8000}));
}

// Their frames reach beyond the screen.
TEST(Geometry, SnappedWindowsComeBack) {
  constexpr PixelRect snapped[] = {{-7, 0, 974, 1047},
                                   {953, 0, 974, 1047},
                                   {953, 520, 974, 527},
                                   {-7, 520, 1934, 527},
                                   {300, 0, 800, 1047}};
  for (const int dpi : {96, 120, 144, 168, 192}) {
    const Screen screen{{0, 40, 1920, 1040}, dpi, 7};
    for (PixelRect window : snapped) {
      window.top += screen.area.top;
      const TwipRect stored = stored_placement(window, dpi, dpi);
      EXPECT_EQ(place_on_desktop(stored, {&screen, 1}, dpi, main_window_design), window)
          << window.left << ' ' << window.top << " at " << dpi;
    }
  }
}

TEST(Geometry, ScreensOfSeveralResolutions) {
  const Screen screens[] = {{{0, 0, 1920, 1040}, 96, 7},
                            {{1920, -200, 2560, 1400}, 144, 11},
                            {{-1280, 300, 1280, 984}, 120, 9}};
  const auto place = [&](const TwipRect& stored, std::size_t count) {
    return place_on_desktop(stored, {screens, count}, 96, main_window_design);
  };
  const std::pair<PixelRect, int> windows[] = {{{1300, 600, 600, 420}, 96},
                                               {{1909, -200, 1302, 1411}, 144},
                                               {{3600, 800, 800, 400}, 144},
                                               {{-1200, 310, 800, 600}, 120},
                                               {{-700, 700, 690, 500}, 120}};
  for (const auto& [window, dpi] : windows) {
    EXPECT_EQ(place(stored_placement(window, dpi, 96), 3), window) << window.left;
  }
  // Most of it is on the second one, in whose middle it comes back.
  EXPECT_EQ(place(stored_placement({1500, 100, 900, 600}, 144, 96), 3),
            (PixelRect{2750, 100, 900, 600}));
  // That screen is gone: the same size as users saw it, in the middle of the first one.
  const TwipRect stored = stored_placement({3600, 800, 900, 600}, 144, 96);
  EXPECT_EQ(place(stored, 1), (PixelRect{660, 320, 600, 400}));
}

}  // namespace
}  // namespace tallowmere
