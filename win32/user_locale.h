#pragma once

#include <string>

#include "engine/date_time.h"
#include "shell/lenient_values.h"

namespace tallowmere::win32 {

/// A day in the user's short date form; empty when the system cannot write it.
std::string short_date(const Date& date);

/// The order of that form.
DateOrder short_date_order();

}  // namespace tallowmere::win32
