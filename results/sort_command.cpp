#include "results/sort_command.h"

#include <string>

namespace tallowmere {

SortAction choose_sort(SortMenu& menu, ResultList& list, SortKey chosen) {
  const bool reverse = menu.is_checked(chosen) && !list.resort_pending;
  menu.check(chosen);
  list.sort_descending = reverse && !list.sort_descending;
  list.resort_pending = false;
  if (list.file_count() < 2) return SortAction::none;
  return reverse ? SortAction::reverse : SortAction::sort;
}

void apply_sort(const SortMenu& menu, ResultList& list, SortAction action) {
  if (action == SortAction::none) return;
  std::string viewed;
  if (list.viewed_index >= 0) viewed = list.indexed_filename(list.viewed_index);
  if (action == SortAction::reverse) {
    reverse_results(list);
  } else {
    sort_results(list, menu.sort_type());
  }
  list.fill_result_list();
  if (list.viewed_index >= 0) {
    list.viewed_index = static_cast<std::ptrdiff_t>(list.find_result_index(viewed));
  }
}

void sort_after_search(const SortMenu& menu, ResultList& list, const std::function<void()>& yield) {
  sort_results(list, menu.sort_type(), yield);
  if (list.sort_descending) reverse_results(list);
  list.fill_result_list();
  list.resort_pending = true;
}

}  // namespace tallowmere
