#include "shell/date_choice.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace tallowmere {
namespace {

enum FieldIndex : int { month_1 = 0, day_1 = 1, year_1 = 2, month_2 = 3, day_2 = 4, year_2 = 5 };

DateRange field_range(int option, int index) {
  if (option == previous_days) return past_days_range;
  if (index == month_1 || index == month_2) return month_range;
  return index == day_1 || index == day_2 ? day_range : year_range;
}

std::string_view field_name(int option, int index) {
  constexpr std::string_view between[date_fields] = {"From month", "From day", "From year",
                                                     "To month",   "To day",   "To year"};
  if (option == between_dates) return between[index];
  if (option == previous_days) return "Days";
  return index == month_1 ? "Month" : "Year";
}

bool is_visible(int option, int index) {
  switch (option) {
    case between_dates:
      return true;
    case specific_year:
      return index == year_1;
    case specific_month:
      return index == month_1 || index == year_1;
    case previous_days:
      return index == day_1;
    default:
      return false;
  }
}

/// The date of three values; an impossible day becomes the month's last.
Date possible_date(int month, int day, int year) {
  return {year, month, std::min(day, days_in_month(year, month))};
}

}  // namespace

void set_date_defaults(SearchCriteria& search, const Date& today) {
  search.from_date = today;
  search.to_date = today;
  search.s_year = today.year;
  search.s_month = today.month;
  search.s_month_year = today.year;
}

std::string_view date_option_caption(int option) {
  constexpr std::string_view captions[date_options] = {
      "All Dates", "Between Dates", "Specific Year", "Specific Month", "Previous Days"};
  assert(option >= 0 && option < date_options);
  return captions[option];
}

void DateChoice::load(const SearchCriteria& search) {
  const bool known = search.date_search >= 0 && search.date_search < date_options;
  option_ = known ? search.date_search : static_cast<int>(all_dates);
  const Date& from = search.from_date;
  const Date& to = search.to_date;
  values_[between_dates] = {month_range.fit(from.month), day_range.fit(from.day),
                            year_range.fit(from.year),   month_range.fit(to.month),
                            day_range.fit(to.day),       year_range.fit(to.year)};
  value(specific_year, year_1) = year_range.fit(search.s_year);
  value(specific_month, month_1) = month_range.fit(search.s_month);
  value(specific_month, year_1) = year_range.fit(search.s_month_year);
  value(previous_days, day_1) = past_days_range.fit(search.past_days);
}

void DateChoice::select(int option) {
  assert(option >= 0 && option < date_options);
  option_ = option;
}

DateField DateChoice::field(int index) const {
  assert(index >= 0 && index < date_fields);
  if (!is_visible(option_, index)) return {};
  const DateRange range = field_range(option_, index);
  return {true, range.min, range.max, value(option_, index), field_name(option_, index)};
}

void DateChoice::set_field(int index, int value) {
  assert(is_visible(option_, index));
  values_[option_][index] = field_range(option_, index).fit(value);
}

DateTexts DateChoice::texts() const {
  switch (option_) {
    case between_dates:
      return {"Search files with dates...", "From", "To"};
    case specific_year:
      return {"Only search files from the year...", "", ""};
    case specific_month:
      return {"Only search files from a single month in the year...", "", ""};
    case previous_days:
      return {"Search files from the past...", "", "days, where 0=today."};
    default:
      return {"Include all file dates in the search.", "", ""};
  }
}

void DateChoice::reset(const Date& today) {
  SearchCriteria search;
  accept(search);
  set_date_defaults(search, today);
  if (option_ == previous_days) search.past_days = 0;
  load(search);
}

void DateChoice::accept(SearchCriteria& search) const {
  const auto& dates = values_[between_dates];
  search.date_search = option_;
  search.from_date = possible_date(dates[month_1], dates[day_1], dates[year_1]);
  search.to_date = possible_date(dates[month_2], dates[day_2], dates[year_2]);
  if (search.from_date > search.to_date) std::swap(search.from_date, search.to_date);
  search.s_year = value(specific_year, year_1);
  search.s_month = value(specific_month, month_1);
  search.s_month_year = value(specific_month, year_1);
  search.past_days = value(previous_days, day_1);
}

}  // namespace tallowmere
