#pragma once

#include <functional>
#include <string>

#include "engine/date_time.h"
#include "engine/search_criteria.h"

namespace tallowmere {

/// The one-line summaries in the criteria dialog's status bar.
struct SearchSummary {
  std::string file_types;
  std::string where;
  std::string dates;
  std::string left_out;  ///< empty: no name is left out
};

/// `short_date` writes a date in the user's short form.
SearchSummary display_panel_date(const SearchCriteria& search,
                                 const std::function<std::string(const Date&)>& short_date);

}  // namespace tallowmere
