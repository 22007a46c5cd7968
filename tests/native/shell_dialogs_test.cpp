#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "shell/date_choice.h"
#include "shell/file_type_choice.h"
#include "shell/lenient_values.h"
#include "shell/proximity_choice.h"
#include "shell/search_summary.h"
#include "shell/spin_field.h"

namespace tallowmere {
namespace {

SearchCriteria dated() {
  SearchCriteria search;
  search.from_date = {2020, 1, 31};
  search.to_date = {2021, 6, 15};
  search.s_year = 1999;
  search.s_month = 7;
  search.s_month_year = 2005;
  search.past_days = 45;
  return search;
}

/// What the status bar would say of each option but the first.
std::string dates(SearchCriteria search) {
  std::string text;
  for (search.date_search = between_dates; search.date_search < date_options;) {
    text += display_panel_date(search, iso_date).dates + ", ";
    ++search.date_search;
  }
  return text;
}

/// The visible fields by their index.
std::string fields(DateChoice& choice, int option) {
  choice.select(option);
  std::string shown;
  for (int i = 0; i < date_fields; ++i) {
    const DateField field = choice.field(i);
    if (field.visible) shown += std::to_string(i) + "=" + std::to_string(field.value) + " ";
  }
  return shown;
}

TEST(DateChoice, EachOptionShowsAndKeepsItsOwnFields) {
  DateChoice choice;
  SearchCriteria search = dated();
  choice.load(search);
  EXPECT_EQ(fields(choice, all_dates), "");
  EXPECT_EQ(fields(choice, between_dates), "0=1 1=31 2=2020 3=6 4=15 5=2021 ");
  choice.set_field(0, 2);     // 31 February 2020
  choice.set_field(5, 2019);  // earlier than that
  EXPECT_EQ(fields(choice, specific_month), "0=7 2=2005 ");
  EXPECT_EQ(fields(choice, previous_days), "1=45 ");
  choice.set_field(1, 20000);
  EXPECT_EQ(choice.field(1).value, choice.field(1).max);
  EXPECT_EQ(fields(choice, specific_year), "2=1999 ");
  choice.set_field(2, 2010);
  choice.accept(search);
  EXPECT_EQ(search.date_search, specific_year);
  EXPECT_EQ(dates(search), "2019-06-15 to 2020-02-29, 2010, 7/2005, Past 9999 Days, ");

  for (const auto& [option, days] :
       {std::pair{specific_year, "Past 9999 Days, "}, {previous_days, "Today, "}}) {
    choice.select(option);
    choice.reset({2024, 2, 29});
    choice.accept(search);
    EXPECT_EQ(dates(search), std::string("2024-02-29 to 2024-02-29, 2024, 2/2024, ") + days);
  }
}

/// What the box shows after digits, u(p), d(own), U and D for pages, h(ome), e(nd), < for backspace
/// and . for the loss of the focus.
std::string after(SpinField& field, std::string_view keys) {
  for (const char key : keys) {
    const std::size_t named = std::string_view("udUDhe").find(key);
    if (named != std::string_view::npos) field.key(static_cast<SpinKey>(named));
    if (key >= '0' && key <= '9') field.digit(key - '0');
    if (key == '<') field.backspace();
    if (key == '.') field.leave();
  }
  return field.text();
}

TEST(SpinField, KeysArrowsAndDigits) {
  SpinField count(0, 1000, 110, {1, 100, 10});
  EXPECT_EQ(after(count, "uUU"), "311");
  count.arrow_click(-1);
  EXPECT_EQ(after(count, "dD"), "200");
  EXPECT_EQ(after(count, "hD"), "0");

  SpinField year(1900, 3000, 1995), month(1, 12, 6);
  after(year, "20");
  EXPECT_EQ(year.value(), 1900) << "always in range, also half typed";
  // A complete number is not added to; an empty one comes back.
  const std::pair<const char*, const char*> cases[] = {
      {"26", "2026"},   {"3", "3"},    {".", "1900"},  {"9999", "3000"}, {"20u", "1901"},
      {"2026<", "202"}, {"4", "2024"}, {"<<<<<<", ""}, {".", "2024"},    {"eu", "3000"}};
  for (const auto& [keys, text] : cases) EXPECT_EQ(after(year, keys), text) << keys;
  EXPECT_EQ(after(month, "0513"), "12");
  after(year, "25");
  year.set_range(0, 31);
  EXPECT_EQ(year.text(), "31") << "from 1900, the nearest year to what was typed";
}

TEST(ProximityChoice, RangeZeroPairAndCancel) {
  ProximityChoice choice;
  for (const auto& [before, after, fitted_before, fitted_after] :
       {std::array{-4, 0, 110, 110}, {0, 110, 0, 110}, {5000, -2147483647, 1000, 0}}) {
    int stored_before = before, stored_after = after;
    choice.ini_frmProximity(true, stored_before, stored_after);
    EXPECT_TRUE(stored_before == choice.before && stored_after == choice.after);
    EXPECT_EQ(std::pair(choice.before, choice.after), std::pair(fitted_before, fitted_after));
  }
  choice.remember();
  choice.all_words = false;
  choice.reset();
  EXPECT_TRUE(choice.before == 110 && choice.after == 110 && !choice.all_words);
  choice.before = choice.after = 0;
  EXPECT_FALSE(choice.acceptable());
  choice.restore();
  EXPECT_TRUE(choice.before == 1000 && choice.after == 0 && choice.all_words);
}

SearchCriteria typed_search() {
  SearchCriteria search;
  search.user_types = {"*", "txt", "", "w??", "", "", ""};
  search.type_descriptions[1] = "Text";
  search.type_checked = {false, true, true};
  return search;
}

/// A letter for the tick of each type, a capital where its box can be used.
std::string ticks(const FileTypeChoice& choice) {
  std::string text;
  for (int i = 0; i < user_type_boxes; ++i) {
    const FileTypeChoice::UserType& type = choice.user_type(i);
    text += (type.enabled ? "UTG" : "utg")[static_cast<int>(type.tick)];
  }
  return text;
}

TEST(FileTypeChoice, AllFilesGreysAndClearsTheUserTypes) {
  FileTypeChoice choice;
  SearchCriteria search = typed_search();
  choice.load(search);
  EXPECT_EQ(ticks(choice), "TuUuuu") << "no type, no tick";
  choice.chkFileType_Click(true);
  choice.txtUserFileType_Change(2, "");
  EXPECT_EQ(ticks(choice), "gggggg");
  choice.accept(search);
  EXPECT_EQ(std::ranges::count(search.type_checked, true), file_type_slots);
  choice.load(search);
  EXPECT_EQ(ticks(choice), "gggggg");
  choice.chkFileType_Click(false);
  EXPECT_EQ(ticks(choice), "Uuuuuu") << "its text was cleared meanwhile";
  choice.accept(search);
  EXPECT_EQ(std::ranges::count(search.type_checked, true), 0);
}

TEST(FileTypeChoice, ATypeTakesItsDescriptionAndTickAlong) {
  FileTypeChoice choice;
  SearchCriteria search = typed_search();
  choice.load(search);
  choice.txtUserFileType_Change(0, "md");
  EXPECT_EQ(choice.user_type(0).description, "");
  choice.set_description(0, "Markdown");
  for (const auto& [type, shown] : {std::pair{"c", "TTUuuu"}, {"", "TuUuuu"}}) {
    choice.txtUserFileType_Change(1, type);
    choice.set_ticked(1, true);
    EXPECT_EQ(ticks(choice), shown) << "a disabled box takes no tick";
  }
  choice.accept(search);
  EXPECT_EQ(search.user_types[1] + search.type_descriptions[1], "mdMarkdown");
}

TEST(FileTypeChoice, WhatStandsBeforeAnExtensionGoes) {
  EXPECT_EQ(pasted_file_type("*.t?t\r\nmore"), "t?t");
  EXPECT_EQ(pasted_file_type("*.*"), "*");
  for (const char* whole : {"", "txt", "*txt", ".txt", " *.txt"}) {
    EXPECT_EQ(pasted_file_type(whole), std::nullopt) << whole;
  }
  EXPECT_EQ(settled_file_type(".tar.gz") + settled_file_type("..c") + settled_file_type("w??"),
            "tar.gz.cw??");
}

TEST(SearchSummary, TypesAndWhere) {
  SearchCriteria search = typed_search();
  search.path = "x";
  search.type_checked = {false, true, false, true};
  const SearchSummary summary = display_panel_date(search, iso_date);
  EXPECT_EQ(summary.file_types + " in " + summary.where, "txt,w?? in x/+");
  search.leave_out = " ; ;";
  EXPECT_EQ(display_panel_date(search, iso_date).left_out, "") << "no name";
}

}  // namespace
}  // namespace tallowmere
