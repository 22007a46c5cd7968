#pragma once

#include <cstddef>
#include <functional>

#include "results/result_list.h"
#include "results/result_sort.h"

namespace tallowmere {

/// The check marks of the five entries of "Sort Files By": at most one is set.
class SortMenu {
 public:
  /// The checked entry, SortKey::none when no entry is.
  SortKey sort_type() const { return checked_; }
  void check(SortKey key) { checked_ = key; }
  bool is_checked(SortKey key) const { return checked_ == key; }

 private:
  SortKey checked_ = SortKey::none;
};

enum class SortAction {
  none,     ///< fewer than two rows: only the check mark moved
  sort,     ///< the records are to be sorted afresh
  reverse,  ///< the records are to be reversed
};

/// Lists of more rows than this show the hourglass and a caption while they are sorted.
inline constexpr std::size_t quick_sort_rows = 200;

/// A choice of one sort entry: moves the check mark, sets the flags of the list and tells what is
/// to be done with the rows.
SortAction choose_sort(SortMenu& menu, ResultList& list, SortKey chosen);

/// Does what choose_sort told and drops duplicates; `viewed_index` follows its file. The window
/// puts its selection back by ResultList::find_result_index.
void apply_sort(const SortMenu& menu, ResultList& list, SortAction action);

/// The end of a search: sorts, reverses when the list is kept in reverse, drops duplicates, and
/// leaves the list so that the next choice of the checked entry sorts afresh.
void sort_after_search(const SortMenu& menu, ResultList& list, const std::function<void()>& yield);

}  // namespace tallowmere
