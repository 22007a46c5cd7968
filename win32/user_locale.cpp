#include "win32/user_locale.h"

#include <windows.h>

#include "win32/text.h"

namespace tallowmere::win32 {

std::string short_date(const Date& date) {
  SYSTEMTIME day{};
  day.wYear = static_cast<WORD>(date.year);
  day.wMonth = static_cast<WORD>(date.month);
  day.wDay = static_cast<WORD>(date.day);
  wchar_t text[128];
  const int length = GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &day, nullptr, text,
                                    static_cast<int>(std::size(text)));
  return length > 0 ? narrow(text) : std::string();
}

std::string general_date(const DateTime& moment) {
  std::string text = short_date(moment.date);
  if (moment.hour == 0 && moment.minute == 0 && moment.second == 0) return text;
  SYSTEMTIME time{};
  time.wHour = static_cast<WORD>(moment.hour);
  time.wMinute = static_cast<WORD>(moment.minute);
  time.wSecond = static_cast<WORD>(moment.second);
  wchar_t units[128];
  const int length = GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &time, nullptr, units,
                                    static_cast<int>(std::size(units)));
  if (length > 0) text += " " + narrow(units);
  return text;
}

std::string thousands_separator() {
  wchar_t units[8] = L"";
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, units, static_cast<int>(std::size(units)));
  return narrow(units);
}

DateOrder short_date_order() {
  wchar_t order[4] = L"";
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IDATE, order, static_cast<int>(std::size(order)));
  if (order[0] == L'1') return DateOrder::day_month_year;
  if (order[0] == L'2') return DateOrder::year_month_day;
  return DateOrder::month_day_year;
}

}  // namespace tallowmere::win32
