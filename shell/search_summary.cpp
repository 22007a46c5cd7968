#include "shell/search_summary.h"

#include "engine/file_system.h"

namespace tallowmere {
namespace {

std::string file_types_summary(const SearchCriteria& search) {
  if (search.type_checked[0]) return "All Files";
  std::string types;
  bool any = false;
  for (int slot = 1; slot < file_type_slots; ++slot) {
    if (!search.type_checked[slot]) continue;
    if (any) types += ',';
    types += search.user_types[slot];
    any = true;
  }
  return any ? types : "No Files";
}

std::string dates_summary(const SearchCriteria& search,
                          const std::function<std::string(const Date&)>& short_date) {
  switch (search.date_search) {
    case all_dates:
      return "All Dates";
    case between_dates:
      return short_date(search.from_date) + " to " + short_date(search.to_date);
    case specific_year:
      return std::to_string(search.s_year);
    case specific_month:
      return std::to_string(search.s_month) + "/" + std::to_string(search.s_month_year);
    case previous_days:
      if (search.past_days == 0) return "Today";
      return "Past " + std::to_string(search.past_days) + " Days";
    default:
      return "";  // no option; such a search accepts no file
  }
}

std::string left_out_summary(const SearchCriteria& search) {
  const bool any = search.leave_out.find_first_not_of("; ") != std::string::npos;
  return any ? "Not " + search.leave_out : "";
}

}  // namespace

SearchSummary display_panel_date(const SearchCriteria& search,
                                 const std::function<std::string(const Date&)>& short_date) {
  return {file_types_summary(search),
          with_separator(search.path) + (search.search_subfolders ? "+" : ""),
          dates_summary(search, short_date), left_out_summary(search)};
}

}  // namespace tallowmere
