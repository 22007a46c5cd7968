#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "engine/date_time.h"
#include "results/result_list.h"

namespace tallowmere {

enum class ResultColumn : int { name = 0, date = 1, size = 2, folder = 3 };

inline constexpr int result_columns = 4;

/// How dates are shown: the user's time zone and the user's short date form.
struct DateFormat {
  const Clock& clock;
  std::function<std::string(const Date&)> short_date;
};

/// The date cell: the short date without its blanks, then the time, such as 9:05a, set so that the
/// times line up on the right. Exactly midnight shows no time.
std::string format_row_date(const DateTime& moment, std::string_view short_date_text);

/// The text of one cell; empty for a date that is not known.
std::string row_cell(const FileRecord& record, ResultColumn column, const DateFormat& format);

}  // namespace tallowmere
