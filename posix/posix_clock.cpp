#include "posix/posix_clock.h"

#include <ctime>
#include <limits>

namespace tallowmere {

namespace {

constexpr std::int64_t seconds_before_epoch = 11'644'473'600;  // from 1601 to 1970

DateTime calendar(std::time_t moment) {
  std::tm parts{};
  localtime_r(&moment, &parts);
  return {{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday},
          parts.tm_hour,
          parts.tm_min,
          parts.tm_sec};
}

}  // namespace

double PosixClock::seconds_since_midnight() const {
  std::timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  const DateTime local = calendar(now.tv_sec);
  return local.hour * 3600 + local.minute * 60 + local.second +
         static_cast<double>(now.tv_nsec) / 1e9;
}

Date PosixClock::today() const {
  return calendar(std::time(nullptr)).date;
}

DateTime PosixClock::to_local(Ticks moment) const {
  return calendar(static_cast<std::time_t>(moment / ticks_per_second - seconds_before_epoch));
}

Ticks PosixClock::start_of_day(const Date& day) const {
  // Ticks can hold only these years, as on every system.
  if (day.year < 1601) return 0;
  if (day.year > 30000) return std::numeric_limits<Ticks>::max();
  std::tm parts{};
  parts.tm_year = day.year - 1900;
  parts.tm_mon = day.month - 1;
  parts.tm_mday = day.day;
  parts.tm_isdst = -1;
  return (static_cast<std::int64_t>(std::mktime(&parts)) + seconds_before_epoch) * ticks_per_second;
}

}  // namespace tallowmere
