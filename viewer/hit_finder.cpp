#include "viewer/hit_finder.h"

#include <algorithm>
#include <utility>

#include "viewer/character_text.h"
#include "viewer/chunk.h"

namespace tallowmere {

namespace {

const Byte* bytes(std::string_view text) {
  return reinterpret_cast<const Byte*>(text.data());
}

}  // namespace

HitFinder::HitFinder(const SearchCriteria& search, const CodePage& page) : search_(search, page) {
  find_max_term_len();
  if (!search.unicode_text) return;
  auto unicode_page = std::make_unique<const SearchPage>(search, page);
  if (unicode_page->fits()) unicode_.reset(new HitFinder(search, std::move(unicode_page)));
}

HitFinder::HitFinder(const SearchCriteria& search, std::unique_ptr<const SearchPage> page)
    : search_page_(std::move(page)), search_(search, *search_page_) {
  find_max_term_len();
}

void HitFinder::find_max_term_len() {
  for (const std::int64_t length : search_.term_len) {
    if (length <= chunk_length) max_term_len_ = std::max(max_term_len_, length);
  }
}

/// Applies the whole-word rule: a missing neighbour is a boundary, also at the ends of a chunk.
bool HitFinder::not_whole_word(std::string_view text, const Byte* at, std::size_t length) const {
  const Byte* begin = bytes(text);
  const Byte* behind = at + length;
  return (at > begin && search_.word[at[-1]]) ||
         (behind < begin + text.size() && search_.word[*behind]);
}

/// False for a term that can occur in no file, or that would occur everywhere.
bool HitFinder::can_stand(std::size_t term) const {
  return search_.representable[term] && search_.term_len[term] > 0;
}

/// Finds the first occurrence that begins at or after `start` and before `end`.
std::int64_t HitFinder::get_hit(std::string_view text, std::int64_t start, std::size_t term,
                                std::int64_t end) const {
  if (!can_stand(term) || start >= end || start > std::ssize(text)) return 0;
  const Byte* begin = bytes(text);
  const std::size_t length = search_.patterns[term].length();
  const std::size_t size = text.size();
  const std::size_t reach =
      end > std::ssize(text) ? size : std::min(size, static_cast<std::size_t>(end) - 2 + length);
  OccurrenceScan scan(search_.patterns[term], begin + (start - 1), begin + reach);
  const Byte* at = scan.next([&](const Byte* candidate) {
    return !search_.whole_word[term] || !not_whole_word(text, candidate, length);
  });
  return at ? at - begin + 1 : 0;
}

// The last occurrence is found by walking over all of them: a chunk is short.
std::int64_t HitFinder::get_prev_hit(std::string_view text, std::int64_t start,
                                     std::size_t term) const {
  if (!can_stand(term) || start < 1) return 0;
  const Byte* begin = bytes(text);
  const std::size_t length = search_.patterns[term].length();
  const std::size_t reach = static_cast<std::size_t>(start - 1) + length;
  OccurrenceScan scan(search_.patterns[term], begin, begin + std::min(text.size(), reach));
  std::int64_t last = 0;
  while (const Byte* at = scan.next([&](const Byte* candidate) {
    return !search_.whole_word[term] || !not_whole_word(text, candidate, length);
  })) {
    last = at - begin + 1;
  }
  return last;
}

Hit HitFinder::get_highlight_position(const HitText& in, std::int64_t position) const {
  position = std::max<std::int64_t>(position, 1);
  if (search_.search_type == search_near) return next_near_hit(in, position);
  Hit best;
  for (std::size_t term = 0; term < search_.patterns.size(); ++term) {
    const std::int64_t at = get_hit(in.text, position, term);
    if (at == 0 || (best.position != 0 && at > best.position)) continue;
    best = {at, static_cast<std::int64_t>(search_.patterns[term].length())};
  }
  return best;
}

HitRange HitFinder::hits_between(const HitText& in, std::int64_t position, std::int64_t end,
                                 int most) const {
  HitRange range{{}, end};
  const bool near = search_.search_type == search_near;
  const std::size_t terms =
      near ? std::min<std::size_t>(search_.patterns.size(), 1) : search_.patterns.size();
  std::vector<std::int64_t> next(terms);
  for (std::size_t term = 0; term < terms; ++term)
    next[term] = get_hit(in.text, position, term, end);
  while (true) {
    Hit best;
    for (std::size_t term = 0; term < terms; ++term) {
      if (next[term] == 0 || (best.position != 0 && next[term] > best.position)) continue;
      best = {next[term], static_cast<std::int64_t>(search_.patterns[term].length())};
    }
    if (best.position == 0) return range;
    if (most-- == 0) {
      range.next = best.position;
      return range;
    }
    if (!near || near_hit_passes(in, best.position)) range.hits.push_back(best);
    for (std::size_t term = 0; term < terms; ++term) {
      if (next[term] == best.position) next[term] = get_hit(in.text, best.position + 1, term, end);
    }
  }
}

Hit HitFinder::get_prev_highlight(const HitText& in, std::int64_t position) const {
  position = std::clamp<std::int64_t>(position, 1, std::max<std::int64_t>(std::ssize(in.text), 1));
  if (search_.search_type == search_near) return prev_near_hit(in, position);
  Hit best;
  for (std::size_t term = 0; term < search_.patterns.size(); ++term) {
    const std::int64_t at = get_prev_hit(in.text, position, term);
    if (at <= best.position) continue;
    best = {at, static_cast<std::int64_t>(search_.patterns[term].length())};
  }
  return best;
}

Hit HitFinder::next_near_hit(const HitText& in, std::int64_t position) const {
  if (search_.patterns.empty()) return {};
  const auto length = static_cast<std::int64_t>(search_.patterns[0].length());
  while (const std::int64_t at = get_hit(in.text, position, 0)) {
    if (near_hit_passes(in, at)) return {at, length};
    position = at + 1;
  }
  return {};
}

Hit HitFinder::prev_near_hit(const HitText& in, std::int64_t position) const {
  if (search_.patterns.empty()) return {};
  const auto length = static_cast<std::int64_t>(search_.patterns[0].length());
  std::vector<std::int64_t> candidates;
  for (std::int64_t at = get_hit(in.text, 1, 0); at != 0 && at <= position;
       at = get_hit(in.text, at + 1, 0)) {
    candidates.push_back(at);
  }
  for (auto at = candidates.rbegin(); at != candidates.rend(); ++at) {
    if (near_hit_passes(in, *at)) return {*at, length};
  }
  return {};
}

bool HitFinder::near_hit_passes(const HitText& in, std::int64_t position) const {
  std::string buffer;
  return proximity_view_search(get_view_proximity_str(in, position, buffer));
}

/// Returns the text around a candidate, in the text itself or, read from the file, in `buffer`;
/// empty when it is the only term. Its place in the file is computed from the length of the text as
/// it is: line breaks that were completed for display shift it.
std::string_view HitFinder::get_view_proximity_str(const HitText& in, std::int64_t position,
                                                   std::string& buffer) const {
  if (search_.last_term == 0) return {};
  const std::int64_t before = search_.prox_before;
  const std::int64_t size = std::ssize(in.text);
  const std::int64_t in_file = position - before + in.file_location - size;
  const std::int64_t start = position - before;
  if (start >= 1 && start + search_.window_len - 1 <= size) {
    return in.text.substr(static_cast<std::size_t>(start - 1),
                          static_cast<std::size_t>(search_.window_len));
  }
  if (in.read_around) return buffer = in.read_around(position, before, search_.window_len);
  const bool before_text = position <= before;
  buffer = read_proximity_str(in, before_text ? std::max<std::int64_t>(in_file, 1) : in_file);
  return buffer;
}

std::string HitFinder::read_proximity_str(const HitText& in, std::int64_t position) const {
  if (position < 1) return {};
  const std::int64_t left = in.file_length - position + 1;
  return in.read_window(position, std::min<std::int64_t>(search_.window_len, left));
}

bool HitFinder::proximity_view_search(std::string_view prox_window) const {
  if (prox_window.empty()) return true;
  for (std::size_t term = 1; term < search_.patterns.size(); ++term) {
    const bool found = get_hit(prox_window, 1, term) != 0;
    if (found != search_.prox_all) return found;
  }
  return search_.prox_all;
}

bool HitFinder::repeats_criteria(std::string_view selection) const {
  if (selection.empty()) return false;
  return std::any_of(
      search_.patterns.begin(), search_.patterns.end(), [&](const BytePattern& pattern) {
        std::uint64_t work = 0;
        return pattern.length() == selection.size() && pattern.equal_at(bytes(selection), work);
      });
}

bool HitFinder::repeats_criteria(std::u16string_view selection) const {
  if (!unicode_) return false;
  const SearchPage& page = *unicode_->search_page();
  return unicode_->repeats_criteria(unit_characters(selection).search_bytes(page));
}

}  // namespace tallowmere
