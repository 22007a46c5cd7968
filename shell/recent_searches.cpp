#include "shell/recent_searches.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <tuple>

#include "engine/unicode.h"
#include "shell/lenient_values.h"
#include "shell/search_summary.h"

namespace tallowmere {
namespace {

// Characters of a line's parts.
constexpr std::size_t longest_words = 200;
constexpr std::size_t longest_folder = 260;
constexpr std::size_t longest_types = 60;

template <typename Search>
auto where_of(Search& search) {
  return std::tie(search.drive, search.path, search.search_subfolders, search.leave_out,
                  search.hidden_files, search.online_files, search.type_checked, search.user_types,
                  search.type_descriptions);
}

template <typename Search>
auto dates_of(Search& search) {
  return std::tie(search.date_search, search.past_days, search.from_date, search.to_date,
                  search.s_year, search.s_month, search.s_month_year);
}

bool same_words(const SearchCriteria& a, const SearchCriteria& b) {
  if (a.criteria != b.criteria || a.search_type != b.search_type || a.match_case != b.match_case) {
    return false;
  }
  return a.search_type != search_near || (a.prox_before == b.prox_before &&
                                          a.prox_after == b.prox_after && a.prox_all == b.prox_all);
}

// The summaries leave out what does not count, such as types that are not ticked.

bool same_where(const SearchCriteria& a, const SearchCriteria& b) {
  const SearchSummary of_a = display_panel_date(a, iso_date);
  const SearchSummary of_b = display_panel_date(b, iso_date);
  return of_a.where == of_b.where && of_a.file_types == of_b.file_types &&
         a.leave_out == b.leave_out && a.hidden_files == b.hidden_files &&
         a.online_files == b.online_files;
}

bool same_dates(const SearchCriteria& a, const SearchCriteria& b) {
  return display_panel_date(a, iso_date).dates == display_panel_date(b, iso_date).dates;
}

bool is_control(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

/// `text` in at most `most` characters, of which the last `tail` are kept, with spaces for control
/// characters.
std::string shown(std::string_view text, std::size_t most, std::size_t tail) {
  std::u32string characters;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = next_code_point(text, at);
    characters += is_control(character) ? U' ' : character;
  }
  if (characters.size() > most) {
    characters.replace(most - tail - 1, characters.size() - most + 1, 1, U'\u2026');
  }
  std::string line;
  for (const char32_t character : characters) append_utf8(line, character);
  return line;
}

std::string type_text(const SearchCriteria& search) {
  constexpr std::array<std::string_view, 4> names{"All Words", "Any Word", "Single Phrase",
                                                  "Proximity Words"};
  std::string text(names.at(static_cast<std::size_t>(search.search_type)));
  if (search.match_case) text += ", Match Case";
  return text;
}

}  // namespace

void RecentSearches::begun(const SearchCriteria& search) {
  std::erase_if(entries_, [&](const SearchCriteria& entry) {
    return same_words(entry, search) && same_where(entry, search) && same_dates(entry, search);
  });
  entries_.insert(entries_.begin(), search);
  if (entries_.size() > most) entries_.pop_back();
}

void RecentSearches::remove(std::size_t index) {
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index));
}

void RecentChoice::choose(const SearchCriteria& chosen, SearchCriteria& search) {
  take_back(search);
  before_ = search;
  where_of(search) = where_of(chosen);
  dates_of(search) = dates_of(chosen);
  after_ = search;
}

void RecentChoice::take_back(SearchCriteria& search) {
  if (!before_) return;
  if (same_where(search, after_)) where_of(search) = where_of(*before_);
  if (same_dates(search, after_)) dates_of(search) = dates_of(*before_);
  before_.reset();
}

std::string RecentLine::text() const {
  std::string text = words;
  for (const std::string& part : {search_type, where, file_types, dates}) text += " \u00B7 " + part;
  return text;
}

RecentLine recent_line(const SearchCriteria& search,
                       const std::function<std::string(const Date&)>& short_date) {
  const SearchSummary summary = display_panel_date(search, short_date);
  return {search.criteria.empty() ? "(any text)" : shown(search.criteria, longest_words, 0),
          type_text(search), shown(summary.where, longest_folder, longest_folder * 2 / 3),
          shown(summary.file_types, longest_types, 0), shown(summary.dates, longest_types, 0)};
}

}  // namespace tallowmere
