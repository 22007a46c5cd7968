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

DateOrder short_date_order() {
  wchar_t order[4] = L"";
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IDATE, order, static_cast<int>(std::size(order)));
  if (order[0] == L'1') return DateOrder::day_month_year;
  if (order[0] == L'2') return DateOrder::year_month_day;
  return DateOrder::month_day_year;
}

}  // namespace tallowmere::win32
