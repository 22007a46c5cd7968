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

std::size_t position_of(const std::string& text, const std::string& part, std::size_t from) {
  return from > text.size() ? 0 : text.find(part, from - 1) + 1;
}

bool not_whole_word(const std::string& text, std::size_t at, std::size_t length) {
  return (at > 1 && is_word(text[at - 2])) ||
         (at + length <= text.size() && is_word(text[at + length - 1]));
}

class LiteralMatcher {
 public:
  LiteralMatcher(const CompiledSearch& search, const CodePage& page, const std::string& file)
      : search_(search), file_(file), seen_(file), found_(search.terms.size()) {
    if (!search.ignore_case) return;
    for (char& c : seen_) c = static_cast<char>(page.lower(static_cast<unsigned char>(c)));
  }

  bool matches() {
    if (search_.max_term_len == 0) return true;
    const std::size_t last = file_.empty() ? 0 : (file_.size() - 1) / chunk_size;
    for (number_ = 0; number_ <= last; ++number_) {
      chunk_ = seen_.substr(number_ * chunk_size, chunk_size);
      if (match_chunk()) return true;
    }
    return false;
  }

 private:
  bool match_chunk() {
    if (search_.search_type == search_phrase) return match_phrase();
    if (search_.search_type == search_near) return match_near();
    const bool all = search_.search_type == search_and;
    for (std::size_t term = 0; term < found_.size(); ++term) {
      found_[term] = found_[term] || match_term_in_chunk(term);
      if (found_[term] != all) return !all;
    }
    return all;
  }

  bool match_term_in_chunk(std::size_t term) {
    if (find_term(chunk_, 1, term, file_, number_ * chunk_size) != 0) return true;
    const auto longest = static_cast<std::size_t>(search_.max_term_len);
    std::size_t result = 0;
    if (number_ > 0) {
      const std::string boundary = carry_ + chunk_.substr(0, longest);
      result = find_term(boundary.substr(0, boundary.size() - 1), 2, term, boundary);
    }
    if (term + 1 == found_.size()) carry_ = right(chunk_, longest);
    return result != 0;
  }

  bool match_phrase() {
    if (!search_.representable[0]) return false;
    const std::string& phrase = search_.terms[0];
    if (position_of(chunk_, phrase, 1) != 0) return true;
    const std::size_t less_one = phrase.size() - 1;
    const std::string boundary = number_ > 0 ? carry_ + chunk_.substr(0, less_one) : "";
    carry_ = right(chunk_, less_one);
    return position_of(boundary, phrase, 1) != 0;
  }

  bool match_near() {
    const std::size_t length = search_.terms[0].size();
    for (std::size_t at = 0; (at = find_term(chunk_, at + 1, 0, file_, number_ * chunk_size));) {
      if (near_terms_in(near_window(static_cast<long long>(at)))) return true;
    }
    if (number_ > 0) {
      const std::string boundary = carry_ + chunk_.substr(0, length);
      const std::string inner = boundary.substr(0, boundary.size() - 1);
      for (std::size_t at = 1; (at = find_term(inner, at + 1, 0, boundary));) {
        const auto place = static_cast<long long>(at) - static_cast<long long>(length) + 1;
        if (near_terms_in(near_window(place))) return true;
      }
    }
    carry_ = right(chunk_, length);
    return false;
  }

  /// Neighbours are those in `around`, in which the text begins behind `shift` bytes.
  std::size_t find_term(const std::string& text, std::size_t from, std::size_t term,
                        const std::string& around, std::size_t shift = 0) const {
    if (!search_.representable[term]) return 0;
    const std::string& wanted = search_.terms[term];
    std::size_t at = position_of(text, wanted, from);
    while (at != 0 && search_.whole_word[term] &&
           not_whole_word(around, shift + at, wanted.size())) {
      at = position_of(text, wanted, at + 1);
    }
    return at;
  }

  std::string near_window(long long at) const {
    if (search_.last_term == 0) return "";
    const long long before = search_.prox_before;
    const auto length = static_cast<std::size_t>(search_.window_len);
    const auto size = static_cast<long long>(chunk_.size());
    if (at > before && at - before + search_.window_len - 1 <= size) {
      return chunk_.substr(static_cast<std::size_t>(at - before - 1), length);
    }
    const auto next_position = static_cast<long long>(number_ * chunk_size) + size + 1;
    long long start = at - size - before + next_position - 1;
    if (at <= before) start = std::max(start, 1LL);
    return seen_.substr(static_cast<std::size_t>(start - 1), length);
  }

  bool near_terms_in(const std::string& window) const {
    if (window.empty()) return true;
    for (std::size_t term = 1; term < search_.terms.size(); ++term) {
      const bool found = find_term(window, 1, term, window) != 0;
      if (found != search_.prox_all) return found;
    }
    return search_.prox_all;
  }

  const CompiledSearch& search_;
  const std::string& file_;
  std::string seen_;  ///< the file as the search compares it
  std::string chunk_;
  std::size_t number_ = 0;  ///< of the chunk, from 0
  std::string carry_;
  std::vector<bool> found_;
};

}  // namespace

bool matches_literally(const CompiledSearch& search, const CodePage& page,
                       const std::string& file) {
  return LiteralMatcher(search, page, file).matches();
}

}  // namespace tallowmere
