#pragma once

#include <compare>
#include <cstdint>

namespace tallowmere {

/// The order in which the user's short date form names day, month and year.
enum class DateOrder { month_day_year, day_month_year, year_month_day };

/// A day of the Gregorian calendar. Default-constructed it is no day at all (all zero).
struct Date {
  int year = 0;
  int month = 0;  ///< 1 to 12
  int day = 0;    ///< 1 to 31
  auto operator<=>(const Date&) const = default;
};

/// A moment as a wall clock in the user's time zone shows it.
struct DateTime {
  Date date;
  int hour = 0;
  int minute = 0;
  int second = 0;
  auto operator<=>(const DateTime&) const = default;
};

/// A moment in UTC, in units of 100 ns since 1601-01-01; 0 is "not known" and earlier than any
/// real moment.
using Ticks = std::int64_t;

inline constexpr Ticks ticks_per_second = 10'000'000;

/// Length of a month in days; `month` must be 1 to 12.
int days_in_month(int year, int month);

/// The day `count` days after (or, negative, before) `date`.
Date add_days(const Date& date, std::int64_t count);

/// Days from 1970-01-01 to `date` (Howard Hinnant, "chrono-compatible low-level date algorithms").
std::int64_t days_from_epoch(const Date& date);

/// True when `date` is a day that the calendar has.
bool is_valid(const Date& date);

/// What the system knows of time. Implemented for each platform; tests use a fixed one.
class Clock {
 public:
  virtual ~Clock() = default;
  /// Local wall-clock time of day, with fractions.
  virtual double seconds_since_midnight() const = 0;
  virtual Date today() const = 0;
  /// Daylight-saving rules are those in force at the moment given.
  virtual DateTime to_local(Ticks moment) const = 0;
  /// The moment at which `day` begins in the user's time zone.
  virtual Ticks start_of_day(const Date& day) const = 0;
};

}  // namespace tallowmere
