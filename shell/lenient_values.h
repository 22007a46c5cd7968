#pragma once

#include <string>
#include <string_view>

#include "engine/date_time.h"

// Stored settings are text that anyone may have edited; these readers take what they can.

namespace tallowmere {

/// The number at the start of `text` after leading white space, 0 when there is none. What is too
/// large for a double becomes the largest one.
double lenient_number(std::string_view text);

/// lenient_number rounded to the nearest integer, halves to the even one, and kept within int.
int lenient_integer(std::string_view text);

/// Takes `text` as a date, year first when it begins with three digits or more and else in `order`,
/// with any separators; years of one or two digits are those of 1930 to 2029. False, with `date`
/// unchanged, when it is no date of the calendar.
bool lenient_date(std::string_view text, DateOrder order, Date& date);

/// yyyy-mm-dd, which lenient_date reads back whatever the user's order is.
std::string iso_date(const Date& date);

}  // namespace tallowmere
