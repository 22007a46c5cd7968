#pragma once

#include <cstddef>
#include <functional>

#include "results/result_list.h"
#include "results/result_sort.h"

namespace tallowmere {

/// The ticks of the five entries of "Sort Files By"; at most one is ticked.
class SortMenu {
 public:
  /// Returns the ticked entry, SortKey::none without one.
  SortKey sort_type() const { return checked_; }
  void check(SortKey key) { checked_ = key; }
  bool is_checked(SortKey key) const { return checked_ == key; }

 private:
  SortKey checked_ = SortKey::none;
};

enum class SortAction {
  none,     ///< fewer than two rows: only the tick moved
  sort,     ///< the records are to be sorted again
  reverse,  ///< the records are to be reversed
};

/// Sorting a list of more rows than this shows the hourglass and a caption.
inline constexpr std::size_t quick_sort_rows = 200;

/// Handles the choice of a sort entry: moves the tick, sets the flags of the list and returns what
/// to do with the rows.
SortAction choose_sort(SortMenu& menu, ResultList& list, SortKey chosen);

/// Does what choose_sort returned and removes duplicates; `viewed_index` follows its file. The
/// window restores its selection by ResultList::find_result_index.
void apply_sort(const SortMenu& menu, ResultList& list, SortAction action);

/// Sorts at the end of a search, reverses when the list is kept in reverse, removes duplicates, and
/// leaves the list so that the next choice of the ticked entry sorts again.
void sort_after_search(const SortMenu& menu, ResultList& list, const std::function<void()>& yield);

}  // namespace tallowmere
