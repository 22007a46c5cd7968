#include "shell/search_kind.h"

namespace tallowmere {

std::string criteria_caption(SearchKind kind) {
  const std::string start = "Search Criteria - ";
  switch (kind) {
    case SearchKind::new_search:
      break;
    case SearchKind::list_search:
      return start + "List Search";
    case SearchKind::file_search:
      return start + "File Search";
  }
  return start + "New Search";
}

bool where_enabled(SearchKind kind) {
  return kind == SearchKind::new_search;
}

bool dates_enabled(SearchKind kind) {
  return kind != SearchKind::file_search;
}

std::string_view narrow_answer(SearchKind kind, std::ptrdiff_t list_index) {
  switch (kind) {
    case SearchKind::new_search:
      break;
    case SearchKind::list_search:
      return "Yes, search all matched files.";
    case SearchKind::file_search:
      return list_index == 0 ? "Yes, search file being viewed." : "Yes, search the selected file.";
  }
  return "No, start new search.";
}

}  // namespace tallowmere
