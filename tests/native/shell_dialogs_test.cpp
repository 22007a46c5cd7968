#include <gtest/gtest.h>

#include <string>

#include "engine/file_system.h"
#include "shell/date_choice.h"
#include "shell/file_type_choice.h"
#include "shell/lenient_values.h"
#include "shell/proximity_choice.h"
#include "shell/search_kind.h"
#include "shell/search_summary.h"
#include "shell/spin_field.h"

namespace tallowmere {
namespace {

SearchCriteria dated(int option) {
  SearchCriteria search;
  search.date_search = option;
  search.from_date = {2020, 1, 31};
  search.to_date = {2021, 6, 15};
  search.s_year = 1999;
  search.s_month = 7;
  search.s_month_year = 2005;
  search.past_days = 45;
  return search;
}

std::string shown_fields(const DateChoice& choice) {
  std::string shown;
  for (int i = 0; i < date_fields; ++i) {
    if (choice.field(i).visible) {
      shown += std::to_string(i) + "=" + std::to_string(choice.field(i).value) + " ";
    }
  }
  return shown;
}

TEST(DateChoice, EachOptionShowsAndKeepsItsOwnFields) {
  DateChoice choice;
  choice.load(dated(between_dates));
  EXPECT_EQ(shown_fields(choice), "0=1 1=31 2=2020 3=6 4=15 5=2021 ");
  choice.select(specific_year);
  EXPECT_EQ(shown_fields(choice), "2=1999 ");
  choice.set_field(2, 2010);
  choice.select(specific_month);
  EXPECT_EQ(shown_fields(choice), "0=7 2=2005 ");
  choice.select(previous_days);
  EXPECT_EQ(shown_fields(choice), "1=45 ");
  EXPECT_EQ(choice.field(1).max, 9999);
  choice.set_field(1, 20000);
  EXPECT_EQ(shown_fields(choice), "1=9999 ");
  choice.select(all_dates);
  EXPECT_EQ(shown_fields(choice), "");

  SearchCriteria search = dated(all_dates);
  choice.select(specific_year);
  choice.accept(search);
  EXPECT_EQ(search.date_search, specific_year);
  EXPECT_EQ(search.s_year, 2010);
  EXPECT_EQ(search.past_days, 9999);
  EXPECT_EQ(iso_date(search.from_date), "2020-01-31");
}

TEST(DateChoice, ImpossibleDaysAndSwappedDates) {
  DateChoice choice;
  SearchCriteria search = dated(between_dates);
  choice.load(search);
  choice.set_field(0, 2);  // 31 February 2020
  choice.set_field(5, 2019);
  choice.accept(search);
  EXPECT_EQ(iso_date(search.from_date), "2019-06-15");
  EXPECT_EQ(iso_date(search.to_date), "2020-02-29");
}

TEST(DateChoice, ResetTakesToday) {
  DateChoice choice;
  SearchCriteria search = dated(previous_days);
  choice.load(search);
  choice.reset({2024, 2, 29});
  EXPECT_EQ(shown_fields(choice), "1=0 ");
  choice.select(between_dates);
  EXPECT_EQ(shown_fields(choice), "0=2 1=29 2=2024 3=2 4=29 5=2024 ");
  choice.select(specific_month);
  EXPECT_EQ(shown_fields(choice), "0=2 2=2024 ");
}

TEST(DateChoice, SurvivesAbsurdStoredValues) {
  SearchCriteria search;  // no dates at all
  search.date_search = -7;
  search.s_year = 2147483647;
  search.s_month = -3;
  search.past_days = -1;
  DateChoice choice;
  choice.load(search);
  EXPECT_EQ(choice.option(), all_dates);
  EXPECT_EQ(choice.texts().description, "Include all file dates in the search.");
  choice.accept(search);
  EXPECT_TRUE(is_valid(search.from_date) && is_valid(search.to_date));
  EXPECT_EQ(search.s_year, 3000);
  EXPECT_EQ(search.s_month, 1);
  EXPECT_EQ(search.s_month_year, 1900);
  EXPECT_EQ(search.past_days, 0);
}

std::string type_digits(SpinField& field, const std::string& digits) {
  for (const char c : digits) field.digit(c - '0');
  return field.text();
}

TEST(SpinField, KeysAndArrowsStayInRange) {
  SpinField count(0, 1000, 110, {1, 100, 10});
  count.key(SpinKey::up);
  count.key(SpinKey::page_up);
  count.arrow_click(1);
  EXPECT_EQ(count.value(), 221);
  count.key(SpinKey::end);
  count.key(SpinKey::up);
  EXPECT_EQ(count.value(), 1000);
  count.key(SpinKey::home);
  count.key(SpinKey::page_down);
  count.arrow_click(-1);
  EXPECT_EQ(count.value(), 0);
}

TEST(SpinField, TypedDigits) {
  SpinField year(1900, 3000, 1995);
  EXPECT_EQ(type_digits(year, "20"), "20");
  EXPECT_EQ(year.value(), 1900) << "always in range, also half typed";
  EXPECT_EQ(type_digits(year, "26"), "2026");
  EXPECT_EQ(type_digits(year, "3"), "3") << "a complete number is not added to";
  year.leave();
  EXPECT_EQ(year.text(), "1900");
  EXPECT_EQ(type_digits(year, "9999"), "3000");
  EXPECT_EQ(type_digits(year, "20"), "20");
  year.key(SpinKey::up);
  EXPECT_EQ(year.text(), "1901");

  SpinField month(1, 12, 6);
  EXPECT_EQ(type_digits(month, "0"), "0");
  EXPECT_EQ(type_digits(month, "5"), "5");
  EXPECT_EQ(type_digits(month, "13"), "12");

  year.set_value(2026);
  year.backspace();
  EXPECT_EQ(year.text(), "202");
  EXPECT_EQ(type_digits(year, "4"), "2024");
  for (int i = 0; i < 6; ++i) year.backspace();
  EXPECT_EQ(year.text(), "");
  year.leave();
  EXPECT_EQ(year.text(), "2024");

  type_digits(year, "25");
  year.set_range(0, 31);
  EXPECT_EQ(year.text(), "31") << "from 1900, the nearest year to what was typed";
}

TEST(ProximityChoice, RangeZeroPairAndCancel) {
  ProximityChoice choice;
  const auto ini = [&](int before, int after) {
    choice.ini_frmProximity(true, before, after);
    EXPECT_EQ(choice.before, before);
    EXPECT_EQ(choice.after, after);
    return std::to_string(before) + "/" + std::to_string(after);
  };
  EXPECT_EQ(ini(0, 0), "110/110");
  EXPECT_EQ(ini(-4, 0), "110/110");
  EXPECT_EQ(ini(0, 110), "0/110");
  EXPECT_EQ(ini(5000, -2147483647), "1000/0");
  EXPECT_EQ(choice.explanation(), "that follow it also match within the range set above.");

  choice.remember();
  choice.all_words = false;
  EXPECT_EQ(choice.explanation(), "that follows it also matches within the range set above.");
  choice.reset();
  EXPECT_EQ(choice.before + choice.after, 220);
  EXPECT_FALSE(choice.all_words);
  choice.before = 0;
  EXPECT_TRUE(choice.acceptable());
  choice.after = 0;
  EXPECT_FALSE(choice.acceptable());
  choice.restore();
  EXPECT_EQ(choice.before, 1000);
  EXPECT_EQ(choice.after, 0);
  EXPECT_TRUE(choice.all_words);
}

SearchCriteria typed_search() {
  SearchCriteria search;
  search.user_types = {"*", "txt", "", "w??", "", "", ""};
  search.type_descriptions[1] = "Text";
  search.type_checked = {false, true, true, false, false, false, false};
  return search;
}

TEST(FileTypeChoice, AllFilesGreysAndClearsTheUserTypes) {
  FileTypeChoice choice;
  SearchCriteria search = typed_search();
  choice.load(search);
  EXPECT_EQ(choice.user_type(0).tick, Tick::ticked);
  EXPECT_EQ(choice.user_type(1).tick, Tick::unticked) << "no type, no tick";
  EXPECT_FALSE(choice.user_type(1).enabled);
  EXPECT_TRUE(choice.user_type(2).enabled);

  choice.chkFileType_Click(true);
  choice.txtUserFileType_Change(2, "");
  for (int i = 0; i < user_type_boxes; ++i) {
    EXPECT_EQ(choice.user_type(i).tick, Tick::greyed);
    EXPECT_FALSE(choice.user_type(i).enabled);
  }
  choice.accept(search);
  EXPECT_EQ(search.type_checked, (std::array<bool, 7>{true, true, true, true, true, true, true}));
  FileTypeChoice again;
  again.load(search);
  EXPECT_EQ(again.user_type(5).tick, Tick::greyed);

  again.chkFileType_Click(false);
  EXPECT_EQ(again.user_type(0).tick, Tick::unticked);
  EXPECT_TRUE(again.user_type(0).enabled);
  EXPECT_FALSE(again.user_type(2).enabled) << "its text was cleared meanwhile";
  again.accept(search);
  EXPECT_EQ(search.type_checked, (std::array<bool, 7>{}));
}

TEST(FileTypeChoice, TextsDescriptionsAndKeys) {
  FileTypeChoice choice;
  SearchCriteria search = typed_search();
  choice.load(search);
  choice.txtUserFileType_Change(0, "md");
  EXPECT_EQ(choice.user_type(0).description, "");
  EXPECT_EQ(choice.user_type(0).tick, Tick::ticked);
  choice.set_description(0, "Markdown");
  choice.txtUserFileType_Change(1, "c");
  choice.set_ticked(1, true);
  choice.txtUserFileType_Change(1, "");
  EXPECT_EQ(choice.user_type(1).tick, Tick::unticked);
  choice.set_ticked(1, true);
  choice.accept(search);
  EXPECT_EQ(search.user_types[1] + search.type_descriptions[1], "mdMarkdown");
  EXPECT_EQ(search.user_types[0], "*");
  EXPECT_FALSE(search.type_checked[2]) << "a disabled box takes no tick";

  EXPECT_TRUE(is_swallowed_type_key('?') && is_swallowed_type_key('|'));
  EXPECT_FALSE(is_swallowed_type_key('.') || is_swallowed_type_key('t'));
  EXPECT_EQ(invalid_file_type_message(),
            "A valid name does not possess the * / : < > ? \\ | characters. Tallowmere will, "
            "however, except a question mark (?) as a wildcard to represent any character for "
            "extensions.");
}

TEST(SearchSummary, TypesWhereAndDates) {
  SearchCriteria search = typed_search();
  const auto summary = [&] { return display_panel_date(search, iso_date); };
  search.path = std::string("x") + path_separator;
  search.search_subfolders = false;
  search.type_checked[3] = true;
  search.type_checked[2] = false;
  EXPECT_EQ(summary().file_types, "txt,w??");
  EXPECT_EQ(summary().where, search.path);
  search.path = "x";
  search.search_subfolders = true;
  EXPECT_EQ(summary().where, std::string("x") + path_separator + "+");
  search.type_checked = {};
  EXPECT_EQ(summary().file_types, "No Files");
  search.type_checked = {true, true};
  EXPECT_EQ(summary().file_types, "All Files");

  const auto dates = [](SearchCriteria dated) { return display_panel_date(dated, iso_date).dates; };
  EXPECT_EQ(dates(dated(all_dates)), "All Dates");
  EXPECT_EQ(dates(dated(between_dates)), "2020-01-31 to 2021-06-15");
  EXPECT_EQ(dates(dated(specific_year)), "1999");
  EXPECT_EQ(dates(dated(specific_month)), "7/2005");
  EXPECT_EQ(dates(dated(previous_days)), "Past 45 Days");
  search = dated(previous_days);
  search.past_days = 0;
  EXPECT_EQ(dates(search), "Today");
  EXPECT_EQ(dates(dated(77)), "");
}

TEST(SearchKind, CaptionsButtonsAndAnswers) {
  EXPECT_EQ(criteria_caption(SearchKind::new_search), "Search Criteria - New Search");
  EXPECT_EQ(criteria_caption(SearchKind::file_search), "Search Criteria - File Search");
  EXPECT_FALSE(where_enabled(SearchKind::list_search));
  EXPECT_TRUE(dates_enabled(SearchKind::list_search));
  EXPECT_FALSE(dates_enabled(SearchKind::file_search));
  EXPECT_EQ(narrow_answer(SearchKind::file_search, 0), "Yes, search file being viewed.");
  EXPECT_EQ(narrow_answer(SearchKind::file_search, 1), "Yes, search the selected file.");
  EXPECT_EQ(narrow_answer(SearchKind::file_search, -1), "Yes, search the selected file.");
}

}  // namespace
}  // namespace tallowmere
