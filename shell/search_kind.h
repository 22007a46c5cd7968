#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tallowmere {

/// What a run searches; the numbers are those of the narrow search prompt's options.
enum class SearchKind : int {
  new_search = 0,   ///< the folders
  list_search = 1,  ///< the files listed
  file_search = 2   ///< the selected file
};

/// The caption of the criteria dialog.
std::string criteria_caption(SearchKind kind);

/// Whether the criteria dialog's buttons for the folder and for the dates mean anything.
bool where_enabled(SearchKind kind);
bool dates_enabled(SearchKind kind);

/// The answers of the narrow search prompt; `list_index` is the selected row, -1 for none.
std::string_view narrow_answer(SearchKind kind, std::ptrdiff_t list_index);

}  // namespace tallowmere
