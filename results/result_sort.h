#pragma once

#include <functional>
#include <string_view>

#include "results/result_list.h"

namespace tallowmere {

/// What the list is sorted by, in the order of the menu and, except for the type, of the columns.
enum class SortKey : int { name = 0, date = 1, size = 2, folder = 3, type = 4, none = 5 };

inline constexpr int sort_key_count = 5;  ///< without SortKey::none

/// Returns a file's type for sorting: what follows the first "." of the name, or the whole name
/// when it has none. (ResultList::list2_extension goes by the last ".".)
std::string_view sort_extension(std::string_view filename);

/// Sorts the records. Names, folders and types ascend, dates and sizes descend; the name decides
/// ties, and what is still equal ends where a Shell sort with gaps n/2, n/4, ... leaves it.
/// `yield`, when given, is called now and then and must not change the list.
void sort_results(ResultList& list, SortKey key, const std::function<void()>& yield = {});

void reverse_results(ResultList& list);

}  // namespace tallowmere
