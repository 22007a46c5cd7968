#include "engine/text_matcher.h"

#include <algorithm>
#include <string_view>

#include "engine/utf8_check.h"

namespace tallowmere {

namespace {

/// Terms to look for before `go_on` is asked again: some milliseconds at most.
constexpr int looks_between_questions = 64;

std::size_t longest(const CompiledSearch& search) {
  return static_cast<std::size_t>(search.max_term_len);
}

/// Returns how many bytes before a chunk its seam and its NEAR windows reach back.
std::size_t wanted_lookback(const CompiledSearch& search) {
  const auto before = static_cast<std::size_t>(std::max(search.prox_before, 0));
  return std::max<std::size_t>(longest(search) + before, 1);
}

std::size_t wanted_lookahead(const CompiledSearch& search) {
  const bool windows = search.search_type == search_near && search.last_term > 0;
  return windows ? static_cast<std::size_t>(search.window_len) : 1;
}

}  // namespace

TextMatcher::TextMatcher(const CompiledSearch& search, const UnicodeSearch* unicode)
    : in_page_(search),
      unicode_(unicode),
      search_(&search),
      text_(unicode),
      chunks_(wanted_lookback(search), wanted_lookahead(search)),
      found_(search.terms.size()),
      next_(search.terms.size()) {}

MatchOutcome TextMatcher::match_open_file(FileReader& file, const std::function<bool()>& go_on,
                                          SystemError& error) {
  struct Closer {
    FileReader& file;
    ~Closer() { file.close(); }
  } closer{file};

  another_as_unicode_ = false;
  if (in_page_.max_term_len == 0) return MatchOutcome::match;
  std::fill(found_.begin(), found_.end(), false);
  carry_ = 0;
  go_on_ = &go_on;
  stopped_ = false;
  text_.begin(file);
  auto failure = chunks_.first(text_);
  if (text_.answer()) return *text_.answer() ? MatchOutcome::match : MatchOutcome::no_match;
  search_ = text_.encoding() == TextEncoding::code_page ? &in_page_ : &unicode_->compiled;
  another_as_unicode_ = !unicode_ && !failure && begins_as_unicode();
  while (true) {
    if (failure) {
      error = *failure;
      return MatchOutcome::failed;
    }
    looks_ = 0;
    if (match_chunk()) return MatchOutcome::match;
    if (stopped_) return MatchOutcome::stopped;
    if (!chunks_.more()) return MatchOutcome::no_match;
    if (!go_on()) return MatchOutcome::stopped;
    failure = chunks_.next(text_);
  }
}

// Looks at one byte only, unless the criteria go beyond ASCII.
bool TextMatcher::begins_as_unicode() const {
  const std::string_view begin(reinterpret_cast<const char*>(chunks_.begin()), chunks_.size());
  const bool marked_utf16 = !begin.empty() && *chunks_.begin() >= 0xFE;
  if (!marked_utf16 && !in_page_.beyond_ascii) return false;
  const TextEncoding encoding = find_text_encoding(begin);
  if (encoding == TextEncoding::utf8) return ascii_length(begin) < begin.size();
  return encoding != TextEncoding::code_page;
}

// Asks `go_on` now and then: searching a chunk takes long when there are thousands of terms.
bool TextMatcher::interrupted() {
  if (!stopped_ && ++looks_ % looks_between_questions == 0) stopped_ = !(*go_on_)();
  return stopped_;
}

bool TextMatcher::match_chunk() {
  switch (search_->search_type) {
    case search_and:
      return match_all_terms();
    case search_or:
      return match_any_term();
    case search_phrase:
      return match_phrase_in_chunk();
    default:
      return match_near_in_chunk();
  }
}

bool TextMatcher::match_all_terms() {
  for (std::size_t term = 0; term < found_.size(); ++term) {
    if (found_[term]) continue;
    if (interrupted() || !match_term_in_chunk(term)) return false;
    found_[term] = true;
  }
  return true;
}

bool TextMatcher::match_any_term() {
  const auto in_chunk = find_any_term();
  if (in_chunk == MultiPattern::Outcome::found) return true;
  const bool one_by_one = in_chunk == MultiPattern::Outcome::too_costly;
  for (std::size_t term = 0; term < found_.size(); ++term) {
    if (interrupted()) return false;
    if (one_by_one ? match_term_in_chunk(term) : match_term_at_boundary(term)) return true;
  }
  return false;
}

MultiPattern::Outcome TextMatcher::find_any_term() {
  if (search_->passes.empty()) return MultiPattern::Outcome::too_costly;
  for (std::size_t pass = 0; pass < search_->passes.size() && !interrupted(); ++pass) {
    const auto accept = [&](std::size_t index, const Byte* at) {
      const std::size_t term = search_->passes_terms[pass * MultiPattern::most + index];
      return !search_->whole_word[term] ||
             !not_whole_word_in_file(at, search_->patterns[term].length());
    };
    const auto outcome = search_->passes[pass].find_any(chunks_.begin(), chunks_.end(), accept);
    if (outcome != MultiPattern::Outcome::none) return outcome;
  }
  return MultiPattern::Outcome::none;
}

bool TextMatcher::find_term(std::size_t term) const {
  if (!search_->representable[term]) return false;
  OccurrenceScan scan(search_->patterns[term], chunks_.begin(), chunks_.end());
  const std::size_t length = search_->patterns[term].length();
  const bool whole = search_->whole_word[term];
  return scan.next([&](const Byte* at) { return !whole || !not_whole_word_in_file(at, length); }) !=
         nullptr;
}

bool TextMatcher::match_term_in_chunk(std::size_t term) {
  return find_term(term) || match_term_at_boundary(term);
}

// The carry is set only when the last term was not found in the chunk. An AND search that stops at
// an earlier term therefore has no carry, and a term at a seam is found only when it is the last
// one and all the others came before: this is how AND has always worked.
bool TextMatcher::match_term_at_boundary(std::size_t term) {
  const bool at_boundary = carry_ > 0 && find_term_at_boundary(term);
  if (term + 1 == found_.size()) carry_ = std::min(longest(*search_), chunks_.size());
  return at_boundary;
}

TextMatcher::Text TextMatcher::term_boundary(std::size_t carry, std::size_t head) const {
  return {chunks_.begin() - carry, chunks_.begin() + std::min(head, chunks_.size())};
}

// A hit contains neither the first nor the last byte of the boundary, so that it has both
// neighbours. In a last chunk shorter than the longest term this misses a hit that ends with the
// file, as it always has.
bool TextMatcher::find_term_at_boundary(std::size_t term) {
  if (!search_->representable[term]) return false;
  const Text boundary = term_boundary(carry_, longest(*search_));
  const std::size_t length = search_->patterns[term].length();
  OccurrenceScan scan(search_->patterns[term], boundary.begin + 1, boundary.end - 1);
  const bool whole = search_->whole_word[term];
  return scan.next([&](const Byte* at) {
    return !whole || !not_whole_word_in_text(boundary, at, length);
  }) != nullptr;
}

bool TextMatcher::match_phrase_in_chunk() {
  if (!search_->representable[0]) return false;
  // The chunk and its seam are searched as one text, since a phrase is taken as it is.
  OccurrenceScan scan(search_->patterns[0], chunks_.begin() - carry_, chunks_.end());
  if (scan.next()) return true;
  carry_ = std::min(longest(*search_) - 1, chunks_.size());
  return false;
}

bool TextMatcher::match_near_in_chunk() {
  if (!search_->representable[0]) return false;
  std::fill(next_.begin(), next_.end(), nullptr);
  const std::size_t length = search_->patterns[0].length();
  const bool whole = search_->whole_word[0];

  OccurrenceScan in_chunk(search_->patterns[0], chunks_.begin(), chunks_.end());
  const auto whole_in_file = [&](const Byte* at) {
    return !whole || !not_whole_word_in_file(at, length);
  };
  while (const Byte* anchor = in_chunk.next(whole_in_file)) {
    if (anchor_passes(anchor)) return true;
  }

  if (carry_ > 0) {
    std::fill(next_.begin(), next_.end(), nullptr);
    const Text boundary = term_boundary(carry_, length);
    OccurrenceScan at_boundary(search_->patterns[0], boundary.begin + 1, boundary.end - 1);
    const auto whole_at_boundary = [&](const Byte* at) {
      return !whole || !not_whole_word_in_text(boundary, at, length);
    };
    // The window of an anchor at a seam lies one byte further right than elsewhere, but further
    // left when the anchor is longer than the chunk that it began in.
    const auto shift = 1 - static_cast<std::ptrdiff_t>(length - carry_);
    while (const Byte* anchor = at_boundary.next(whole_at_boundary)) {
      if (anchor_passes(anchor + shift)) return true;
    }
  }
  carry_ = std::min(length, chunks_.size());
  return false;
}

bool TextMatcher::not_whole_word_in_file(const Byte* at, std::size_t length) const {
  const Byte* behind = at + length;
  return (at > chunks_.memory_begin() && search_->word[at[-1]]) ||
         (behind < chunks_.memory_end() && search_->word[*behind]);
}

bool TextMatcher::not_whole_word_in_text(const Text& text, const Byte* at,
                                         std::size_t length) const {
  const Byte* behind = at + length;
  return (at > text.begin && search_->word_in_text[at[-1]]) ||
         (behind < text.end && search_->word_in_text[*behind]);
}

bool TextMatcher::anchor_passes(const Byte* anchor) {
  if (search_->last_term == 0 || search_->window_len == 0) return true;
  return near_terms_in_window(load_near_window(anchor));
}

// A window that would begin before the file begins with it instead and keeps its full length.
TextMatcher::Text TextMatcher::load_near_window(const Byte* anchor) const {
  const auto before = static_cast<std::ptrdiff_t>(search_->prox_before);
  const Byte* memory = chunks_.memory_begin();
  const Byte* begin = anchor - memory >= before ? anchor - before : memory;
  const auto length = std::min<std::ptrdiff_t>(search_->window_len, chunks_.memory_end() - begin);
  return {begin, begin + length};
}

bool TextMatcher::near_terms_in_window(const Text& window) {
  const bool all = search_->prox_all;
  for (std::size_t term = 1; term < search_->patterns.size(); ++term) {
    if (interrupted()) return false;
    if (find_term_in_window(window, term) != all) return !all;
  }
  return all;
}

// Windows only move to the right, so the next occurrence of a term, once found, answers for every
// window that ends before it: many anchors close together do not each search their window. A word
// that goes on beyond an end of the window counts as whole inside it.
bool TextMatcher::find_term_in_window(const Text& window, std::size_t term) {
  const BytePattern& pattern = search_->patterns[term];
  const auto length = static_cast<std::ptrdiff_t>(pattern.length());
  if (!search_->representable[term] || window.end - window.begin < length) return false;
  const bool whole = search_->whole_word[term];
  const Byte*& next = next_[term];
  if (!next || next < window.begin) {
    const Text text{chunks_.memory_begin(), chunks_.memory_end()};
    OccurrenceScan scan(pattern, window.begin, text.end);
    const Byte* hit = scan.next([&](const Byte* at) {
      return !whole || !not_whole_word_in_text(text, at, pattern.length());
    });
    next = hit ? hit : text.end;
  }
  const Byte* last = window.end - length;
  if (next <= last) return true;
  return whole &&
         (stands_whole(window, window.begin, pattern) || stands_whole(window, last, pattern));
}

bool TextMatcher::stands_whole(const Text& window, const Byte* at,
                               const BytePattern& pattern) const {
  std::uint64_t work = 0;
  return !not_whole_word_in_text(window, at, pattern.length()) && pattern.equal_at(at, work);
}

}  // namespace tallowmere
