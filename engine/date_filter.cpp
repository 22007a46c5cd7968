#include "engine/date_filter.h"

#include <algorithm>
#include <limits>

namespace tallowmere {

namespace {

/// Limits a year to what dates can hold. Settings may hold any number; no file is from a year near
/// either limit.
int representable_year(int year) {
  return std::clamp(year, 0, 30000);
}

}  // namespace

DateFilter::DateFilter(const SearchCriteria& search, const Clock& clock) {
  const auto span = [this, &clock](const Date& first, const Date& behind) {
    from_ = clock.start_of_day(first);
    to_ = clock.start_of_day(behind);
  };
  switch (search.date_search) {
    case all_dates:
      limits_ = false;
      break;
    case between_dates:
      span(search.from_date, add_days(search.to_date, 1));
      break;
    case specific_year: {
      const int year = representable_year(search.s_year);
      span({year, 1, 1}, {year + 1, 1, 1});
      break;
    }
    case specific_month: {
      if (search.s_month < 1 || search.s_month > 12) break;
      const int year = representable_year(search.s_month_year);
      const bool december = search.s_month == 12;
      span({year, search.s_month, 1},
           {year + (december ? 1 : 0), december ? 1 : search.s_month + 1, 1});
      break;
    }
    case previous_days:
      from_ = clock.start_of_day(add_days(clock.today(), -std::int64_t{search.past_days}));
      to_ = std::numeric_limits<Ticks>::max();
      break;
    default:
      break;
  }
}

}  // namespace tallowmere
