#include "tests/native/literal_matcher.h"

#include <algorithm>

namespace tallowmere {

namespace {

constexpr std::size_t chunk_size = 63000;

bool is_word(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 65 && byte <= 90) || (byte >= 97 && byte <= 122) || byte >= 192;
}

std::string right(const std::string& text, std::size_t count) {
  return text.substr(text.size() - std::min(count, text.size()));
}

}  // namespace

LiteralMatcher::LiteralMatcher(const SearchCriteria& search, const CodePage& page)
    : search_(search), page_(page) {}

std::string LiteralMatcher::lower(std::string text) const {
  for (char& c : text) c = static_cast<char>(page_.lower(static_cast<unsigned char>(c)));
  return text;
}

std::string LiteralMatcher::seen(const std::string& text) const {
  return search_.ignore_case ? lower(text) : text;
}

bool LiteralMatcher::matches(const std::string& file) {
  if (search_.max_term_len == 0) return true;
  file_ = file;
  carry_.clear();
  found_.assign(search_.terms.size(), false);
  const std::size_t last = file.empty() ? 0 : (file.size() - 1) / chunk_size;
  for (number_ = 0; number_ <= last; ++number_) {
    const std::string raw = file.substr(number_ * chunk_size, chunk_size);
    next_position_ = number_ * chunk_size + raw.size() + 1;
    chunk_ = search_.search_type == search_phrase ? raw : seen(raw);
    bool match = false;
    if (search_.search_type == search_and) match = match_and();
    if (search_.search_type == search_or) match = match_or();
    if (search_.search_type == search_phrase) match = match_phrase();
    if (search_.search_type == search_near) match = match_near();
    if (match) return true;
  }
  return false;
}

bool LiteralMatcher::match_and() {
  for (int term = 0; term <= search_.last_term; ++term) {
    if (found_[static_cast<std::size_t>(term)]) continue;
    if (!match_term_in_chunk(term)) break;
    found_[static_cast<std::size_t>(term)] = true;
  }
  return std::find(found_.begin(), found_.end(), false) == found_.end();
}

bool LiteralMatcher::match_or() {
  for (int term = 0; term <= search_.last_term; ++term) {
    if (match_term_in_chunk(term)) return true;
  }
  return false;
}

bool LiteralMatcher::match_term_in_chunk(int term) {
  if (find_term(1, term) != 0) return true;
  const auto longest = static_cast<std::size_t>(search_.max_term_len);
  std::size_t result = 0;
  if (number_ > 0) {
    const std::string boundary = carry_ + chunk_.substr(0, longest);
    result = find_term_in(boundary.substr(0, boundary.size() - 1), 2, term, boundary);
  }
  if (term == search_.last_term) carry_ = right(chunk_, longest);
  return result != 0;
}

bool LiteralMatcher::match_phrase() {
  if (!search_.phrase.representable) return false;
  const std::string phrase = seen(search_.phrase.bytes);
  if (find(seen(chunk_), phrase, 1) != 0) return true;
  const std::size_t less_one = phrase.size() - 1;
  const bool at_seam =
      number_ > 0 && find(seen(carry_ + chunk_.substr(0, less_one)), phrase, 1) != 0;
  carry_ = right(chunk_, less_one);
  return at_seam;
}

bool LiteralMatcher::match_near() {
  const auto length = static_cast<std::size_t>(search_.term_len[0]);
  for (std::size_t at = find_term(1, 0); at != 0; at = find_term(at + 1, 0)) {
    if (near_terms_in(near_window(static_cast<long long>(at)))) return true;
  }
  if (number_ > 0) {
    const std::string boundary = carry_ + chunk_.substr(0, length);
    const std::string inner = boundary.substr(0, boundary.size() - 1);
    for (std::size_t at = find_term_in(inner, 2, 0, boundary); at != 0;
         at = find_term_in(inner, at + 1, 0, boundary)) {
      const auto place = static_cast<long long>(at) - static_cast<long long>(length) + 1;
      if (near_terms_in(near_window(place))) return true;
    }
  }
  carry_ = right(chunk_, length);
  return false;
}

std::size_t LiteralMatcher::find(const std::string& text, const std::string& part,
                                 std::size_t from) const {
  if (from > text.size()) return 0;
  return text.find(part, from - 1) + 1;
}

std::size_t LiteralMatcher::find_term(std::size_t from, int term) const {
  const auto index = static_cast<std::size_t>(term);
  if (!search_.representable[index]) return 0;
  std::size_t at = find(chunk_, search_.terms[index], from);
  while (at != 0 && search_.whole_word[index] &&
         not_whole_word_in_file(at, search_.terms[index].size())) {
    at = find(chunk_, search_.terms[index], at + 1);
  }
  return at;
}

std::size_t LiteralMatcher::find_term_in(const std::string& text, std::size_t from, int term,
                                         const std::string& around) const {
  const auto index = static_cast<std::size_t>(term);
  if (!search_.representable[index]) return 0;
  std::size_t at = find(text, search_.terms[index], from);
  while (at != 0 && search_.whole_word[index] &&
         not_whole_word_in(around, at, search_.terms[index].size())) {
    at = find(text, search_.terms[index], at + 1);
  }
  return at;
}

bool LiteralMatcher::not_whole_word_in_file(std::size_t at, std::size_t length) const {
  const std::size_t position = number_ * chunk_size + at;  // 1-based, in the file
  if (position > 1 && is_word(file_[position - 2])) return true;
  return position + length <= file_.size() && is_word(file_[position + length - 1]);
}

bool LiteralMatcher::not_whole_word_in(const std::string& text, std::size_t at,
                                       std::size_t length) {
  if (at > 1 && is_word(text[at - 2])) return true;
  return at + length <= text.size() && is_word(text[at + length - 1]);
}

std::string LiteralMatcher::near_window(long long at) const {
  if (search_.last_term == 0) return "";
  const long long before = search_.prox_before;
  const long long length = search_.window_len;
  const auto size = static_cast<long long>(chunk_.size());
  long long start = at - size - before + static_cast<long long>(next_position_) - 1;
  if (at <= before) {
    start = std::max(start, 1LL);
  } else if (at - before + length - 1 <= size) {
    return chunk_.substr(static_cast<std::size_t>(at - before - 1),
                         static_cast<std::size_t>(length));
  }
  return seen(file_.substr(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(length)));
}

bool LiteralMatcher::near_terms_in(const std::string& window) const {
  if (window.empty()) return true;
  for (int term = 1; term <= search_.last_term; ++term) {
    const bool found = find_term_in(window, 1, term, window) != 0;
    if (found != search_.prox_all) return found;
  }
  return search_.prox_all;
}

}  // namespace tallowmere
