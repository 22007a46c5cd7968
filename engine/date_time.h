#pragma once

#include <compare>
#include <cstdint>

namespace tallowmere {

/// The order in which the user's short date form names day, month and year.
enum class DateOrder { month_day_year, day_month_year, year_month_day };

/// A day of the Gregorian calendar; all zero, as by default, it is no day at all.
struct Date {
  int year = 0;
  int month = 0;  ///< 1 to 12
  int day = 0;    ///< 1 to 31
  auto operator<=>(const Date&) const = default;
};

/// A moment as a clock in the user's time zone shows it.
struct DateTime {
  Date date;
  int hour = 0;
  int minute = 0;
  int second = 0;
  auto operator<=>(const DateTime&) const = default;
};

/// A moment in UTC, in units of 100 ns since 1601-01-01; 0 means "not known" and is earlier than
/// any real moment.
using Ticks = std::int64_t;

inline constexpr Ticks ticks_per_second = 10'000'000;

/// Returns the length of a month in days; `month` must be 1 to 12.
int days_in_month(int year, int month);

/// Returns the day `count` days after `date`, or before it when `count` is negative.
Date add_days(const Date& date, std::int64_t count);

/// Counts the days from 1970-01-01 to `date`.
std::int64_t days_from_epoch(const Date& date);

/// True when the calendar has this day.
bool is_valid(const Date& date);

/// What the system knows of time. Each platform implements it; tests use a fixed one.
class Clock {
 public:
  virtual ~Clock() = default;
  /// Returns the local time of day, with fractions.
  virtual double seconds_since_midnight() const = 0;
  virtual Date today() const = 0;
  /// Converts to local time by the daylight-saving rules in force at that moment.
  virtual DateTime to_local(Ticks moment) const = 0;
  /// Returns the moment at which `day` begins in the user's time zone.
  virtual Ticks start_of_day(const Date& day) const = 0;
};

}  // namespace tallowmere
