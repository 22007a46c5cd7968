#pragma once

#include <array>
#include <string_view>

#include "engine/date_time.h"
#include "engine/search_criteria.h"

namespace tallowmere {

inline constexpr int date_options = 5;
inline constexpr int date_fields = 6;

/// What a date field takes, both ends included.
struct DateRange {
  int min;
  int max;
  constexpr bool holds(int value) const { return value >= min && value <= max; }
  constexpr int fit(int value) const { return value < min ? min : value > max ? max : value; }
};

inline constexpr DateRange month_range{1, 12};
inline constexpr DateRange day_range{1, 31};
inline constexpr DateRange year_range{1900, 3000};
inline constexpr DateRange past_days_range{0, 9999};

/// Sets the dates of the search to today, this year and this month.
void set_date_defaults(SearchCriteria& search, const Date& today);

/// The captions of the date options, by DateSearch.
std::string_view date_option_caption(int option);

/// One of the six spin fields as the chosen option shows it.
struct DateField {
  bool visible = false;
  int min = 0;
  int max = 0;
  int value = 0;
  std::string_view name;  ///< what the field is, for tool tips and assistive tools
};

/// The texts beside the fields for one option; empty texts are hidden.
struct DateTexts {
  std::string_view description;   ///< Label4
  std::string_view first_label;   ///< Label3, before fields 0 to 2
  std::string_view second_label;  ///< Label5: before fields 3 to 5, or after field 1
};

/// What the dates dialog edits. Each option keeps its own values: between two dates fields 0 to 2
/// and 3 to 5 (month, day, year), for a year field 2, for a month fields 0 and 2, for previous days
/// field 1. To be filled by load() before use.
class DateChoice {
 public:
  /// Takes the values over and fits them into the ranges of the fields. A date option that does not
  /// exist shows as "All Dates".
  void load(const SearchCriteria& search);

  int option() const { return option_; }
  void select(int option);

  DateField field(int index) const;
  /// Sets a visible field; the value is fitted into its range.
  void set_field(int index, int value);

  DateTexts texts() const;

  /// Sets every month, day and year to today's, and the shown number of days to 0, which is today.
  void reset(const Date& today);

  /// Writes all date fields. An impossible day becomes the month's last; two dates in the wrong
  /// order change places.
  void accept(SearchCriteria& search) const;

 private:
  int& value(int option, int index) { return values_[option][index]; }
  int value(int option, int index) const { return values_[option][index]; }

  int option_ = all_dates;
  /// By option and field; those of hidden fields mean nothing.
  std::array<std::array<int, date_fields>, date_options> values_{};
};

}  // namespace tallowmere
