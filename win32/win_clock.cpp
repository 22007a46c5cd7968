#include "win32/win_clock.h"

#include <windows.h>

#include <limits>

namespace tallowmere::win32 {

namespace {

SYSTEMTIME local_now() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  return now;
}

}  // namespace

double WinClock::seconds_since_midnight() const {
  const SYSTEMTIME now = local_now();
  return now.wHour * 3600 + now.wMinute * 60 + now.wSecond + now.wMilliseconds / 1000.0;
}

Date WinClock::today() const {
  const SYSTEMTIME now = local_now();
  return {now.wYear, now.wMonth, now.wDay};
}

DateTime WinClock::to_local(Ticks moment) const {
  const FILETIME time{static_cast<DWORD>(moment), static_cast<DWORD>(moment >> 32)};
  SYSTEMTIME universal;
  SYSTEMTIME local;
  if (!FileTimeToSystemTime(&time, &universal) ||
      !SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local)) {
    return {};
  }
  return {{local.wYear, local.wMonth, local.wDay}, local.wHour, local.wMinute, local.wSecond};
}

Ticks WinClock::start_of_day(const Date& day) const {
  // The system's calendar has only these years.
  if (day.year < 1601) return 0;
  if (day.year > 30827) return std::numeric_limits<Ticks>::max();
  SYSTEMTIME local{};
  local.wYear = static_cast<WORD>(day.year);
  local.wMonth = static_cast<WORD>(day.month);
  local.wDay = static_cast<WORD>(day.day);
  SYSTEMTIME universal;
  FILETIME time;
  if (!TzSpecificLocalTimeToSystemTime(nullptr, &local, &universal) ||
      !SystemTimeToFileTime(&universal, &time)) {
    return 0;
  }
  return static_cast<Ticks>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
}

}  // namespace tallowmere::win32
