#pragma once

#include <string>

#include "engine/date_time.h"

namespace tallowmere::win32 {

/// Formats a day in the user's short date form; empty when the system cannot write it.
std::string short_date(const Date& date);

/// Returns the order of that form.
DateOrder short_date_order();

/// Formats a moment in the user's general form: the short date and, except at midnight, the time.
std::string general_date(const DateTime& moment);

/// Returns what the user writes between thousands.
std::string thousands_separator();

}  // namespace tallowmere::win32
