#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "engine/date_time.h"
#include "engine/search_criteria.h"

namespace tallowmere {

/// The searches that the user began last, the newest first. How the text of the files was read
/// (`unicode_text`) is no part of them: it is as the menu has it when a search is made again.
class RecentSearches {
 public:
  static constexpr std::size_t most = 20;

  const std::vector<SearchCriteria>& entries() const { return entries_; }

  /// Puts a search that begins first. The same search, in all that it searches by, is kept once.
  void begun(const SearchCriteria& search);
  /// `index` must be that of an entry.
  void remove(std::size_t index);
  void forget_all() { entries_.clear(); }

 private:
  std::vector<SearchCriteria> entries_;
};

/// What a search chosen from the list has brought into the current one besides its words: where to
/// search, and which dates. It can be taken back.
class RecentChoice {
 public:
  /// Brings in a chosen search; takes back an earlier choice first.
  void choose(const SearchCriteria& chosen, SearchCriteria& search);
  /// Restores where to search as it was before the choice, unless it has been changed since; the
  /// dates likewise.
  void take_back(SearchCriteria& search);

 private:
  std::optional<SearchCriteria> before_;
  SearchCriteria after_;
};

/// A search in one line, without control characters and of a bounded length.
struct RecentLine {
  std::string words;
  std::string search_type;
  std::string where;
  std::string file_types;
  std::string dates;

  std::string text() const;
};

/// `short_date` writes a date in the user's short form.
RecentLine recent_line(const SearchCriteria& search,
                       const std::function<std::string(const Date&)>& short_date);

}  // namespace tallowmere
