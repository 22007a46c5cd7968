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

/// Returns the text of one cell; empty for an unknown date. The time after a date is spaced so that
/// the times line up on the right.
std::string row_cell(const FileRecord& record, ResultColumn column, const DateFormat& format);

}  // namespace tallowmere
