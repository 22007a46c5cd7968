#include "engine/date_time.h"

#include <cassert>

namespace tallowmere {

namespace {

// Both conversions follow Howard Hinnant, "chrono-compatible low-level date algorithms".
Date from_epoch_days(std::int64_t days) {
  days += 719468;
  const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
  const std::int64_t day_of_era = days - era * 146097;
  const std::int64_t year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const std::int64_t day_of_year =
      day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::int64_t shifted_month = (5 * day_of_year + 2) / 153;
  const int day = static_cast<int>(day_of_year - (153 * shifted_month + 2) / 5 + 1);
  const int month = static_cast<int>(shifted_month < 10 ? shifted_month + 3 : shifted_month - 9);
  const int year = static_cast<int>(year_of_era + era * 400) + (month <= 2 ? 1 : 0);
  return {year, month, day};
}

}  // namespace

int days_in_month(int year, int month) {
  assert(month >= 1 && month <= 12);
  constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  return month == 2 && leap ? 29 : lengths[month - 1];
}

std::int64_t days_from_epoch(const Date& date) {
  const std::int64_t year = date.month <= 2 ? date.year - 1 : date.year;
  const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
  const std::int64_t year_of_era = year - era * 400;
  const std::int64_t shifted_month = date.month > 2 ? date.month - 3 : date.month + 9;
  const std::int64_t day_of_year = (153 * shifted_month + 2) / 5 + date.day - 1;
  const std::int64_t day_of_era =
      year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
  return era * 146097 + day_of_era - 719468;
}

Date add_days(const Date& date, std::int64_t count) {
  return from_epoch_days(days_from_epoch(date) + count);
}

bool is_valid(const Date& date) {
  return date.month >= 1 && date.month <= 12 && date.day >= 1 &&
         date.day <= days_in_month(date.year, date.month);
}

}  // namespace tallowmere
