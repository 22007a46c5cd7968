#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "engine/compiled_search.h"
#include "engine/search_page.h"
#include "engine/text_encoding.h"

namespace tallowmere {

using Position = std::int64_t;  ///< 1-based; 0: none

template <class Text>
Text part(const Text& text, Position from, Position count) {
  if (from < 1 || from > std::ssize(text) || count < 1) return {};
  return text.substr(static_cast<std::size_t>(from - 1), static_cast<std::size_t>(count));
}

template <class Text>
int code_at(const Text& text, Position at) {  // -1 outside
  if (at < 1 || at > std::ssize(text)) return -1;
  const auto code = text[static_cast<std::size_t>(at - 1)];
  return static_cast<int>(static_cast<std::make_unsigned_t<decltype(code)>>(code));
}

using Characters = std::u32string;
using Positions = std::vector<Position>;

/// Where the characters are as the text box counts.
inline Positions unit_places(const Characters& text) {
  Positions places{1};
  for (const char32_t code : text) {
    places.push_back(places.back() + (code > 0xFFFF && code != no_character ? 2 : 1));
  }
  return places;
}

/// What the text box shows of a chunk. `position`, 1-based in the chunk, moves along. `from`
/// receives the position that each character stands for.
inline Characters literal_filter(Characters chunk, const std::string& extension,
                                 Position chunk_start, Position& position, Positions& from) {
  const auto printable = [&](Position at) {
    return code_at(chunk, at) >= 32 && code_at(chunk, at) <= 126;
  };
  const Position size = std::ssize(chunk);
  if (extension == "wri" && chunk_start <= 128 && code_at(chunk, 1) == '1' &&
      code_at(chunk, 2) == 190 && 129 - chunk_start <= size) {
    chunk[static_cast<std::size_t>(128 - chunk_start)] = 13;
  }
  Characters out;
  from.clear();
  int insertions = 0;
  const Position asked = position;
  // A break to be completed, or dropped when there were too many.
  const auto complete = [&](Position at, bool moves) {
    if (insertions == 1500) {
      if (at < asked) --position;
      return;
    }
    ++insertions;
    if (moves) ++position;
    out += U"\r\n";
    from.insert(from.end(), {code_at(chunk, at) == 10 ? at - 1 : at, at});
  };
  for (Position i = 1; i <= size; ++i) {
    const int before = code_at(chunk, i - 1);
    int c = code_at(chunk, i);
    if (c == 0 && printable(i - 1)) c = 13;
    if (c >= 32 || c == 9) {
      out += static_cast<char32_t>(c);
    } else if (c == 13 && i < size) {
      code_at(chunk, i + 1) == 10 ? out.push_back('\r') : complete(i, i < asked);
    } else if (c == 10 && i > 1) {
      const bool pair = before == 13 || (before == 0 && printable(i - 2));
      pair ? out.push_back('\n') : complete(i, i <= asked);
    } else if (c == 0 && i > 1 && printable(i + 1)) {
      out.back() = '\r';
      out += '\n';
    } else {
      out += '.';
    }
    if (from.size() < out.size()) from.push_back(i);
  }
  from.push_back(size + 1);
  return out;
}

/// The viewer and its steps from hit to hit as one would write them down without a thought for
/// speed: one-based positions, whole strings, every chunk and every window cut from the file.
class LiteralViewer {
 public:
  LiteralViewer(const std::string& file, const std::string& extension, const SearchCriteria& search,
                const CodePage& page, TextEncoding encoding = TextEncoding::code_page)
      : file_(file),
        extension_(extension),
        unicode_(encoding != TextEncoding::code_page),
        search_page_(search, page),
        search_(unicode_ ? CompiledSearch(search, search_page_) : CompiledSearch(search, page)),
        page_(page) {
    for (std::size_t at = mark_length(encoding, file); at < file.size();) {
      auto [code, length] = unicode_ ? next_character(file, at, encoding)
                                     : TextCharacter{static_cast<unsigned char>(file[at]), 1};
      if (code > no_character) code = page.to_unicode(static_cast<unsigned char>(code));
      all_ += code;
      at_.push_back(static_cast<Position>(at) + 1);
      at += length;
    }
    at_.push_back(std::ssize(file) + 1);
    for (const std::string& term : terms_) {
      if (term.size() <= 31000) max_term_len_ = std::max<Position>(max_term_len_, std::ssize(term));
    }
  }

  Characters text1;
  Position sel_start = 0, sel_length = 0;
  Position chunk_start = 1, file_location = 1;
  bool last_chunk = true, chunk_pending = true;
  int beeps = 0, misses = 0;

  int scroll_value(Position length) const {
    const Position end = sel_start + length;
    const Position place = unicode_ ? shown_place(index_of(end + 1)) : chunk_start + end;
    const auto at = static_cast<double>(place);
    return static_cast<int>(
        std::nearbyint(std::min(at / static_cast<double>(file_.size()), 1.0) * 100000));
  }

  void load_text_chunk(Position start, Position position) {
    chunk_start = start;
    get_file_chunk(position);
    fill_textbox(index_of(position));
    sel_length = 0;
  }

  void find(bool forward) {
    forward = forward || chunk_pending;
    if (search_.everything) return load_text_chunk(1, 1);
    const bool shown = !chunk_pending;
    const auto old = std::tuple(chunk_start, file_location, last_chunk, text1, first_, from_,
                                unit_places(text1));
    bool wrapped = false;
    const auto in_text1 = [&] { return shown && wrapped && get<0>(old) == 1 && chunk_start <= 1; };
    Position start = forward ? sel_start + 2 : sel_start;
    Position length = 0;
    while (true) {
      if (chunk_pending) {
        chunk_start = new_start(forward);
        start = forward ? 1 : 31000;
        if (!in_text1()) {
          get_file_chunk(start);
        } else {
          std::tie(chunk_start, file_location, last_chunk, chunk_text_, first_, from_, places_) =
              old;
          if (!forward) start = places_.back() - 1;
        }
      }
      if (!forward && start >= 1) start = index_of(start + 1) - 1;
      if (forward) start = index_of(start);
      start = get_highlight_position(start, forward, length);
      if (start != 0) break;
      if (forward ? last_chunk : chunk_start == 1) {
        if (wrapped) {
          ++misses;
          return load_text_chunk(1, 1);
        }
        wrapped = true;
      }
      chunk_pending = true;
    }
    if (chunk_pending && !in_text1()) start = fill_textbox(start);
    chunk_pending = false;
    const Position end = std::min<Position>(start + length, std::ssize(text1) + 1);
    sel_start = places_[static_cast<std::size_t>(start - 1)] - 1;
    sel_length = places_[static_cast<std::size_t>(end - 1)] - 1 - sel_start;
    if (wrapped) ++beeps;
  }

 private:
  /// The first character of the text at hand at or after a place.
  Position index_of(Position place) const {
    return std::lower_bound(places_.begin(), places_.end() - 1, place) - places_.begin() + 1;
  }
  /// The character of the chunk as read that one of the text at hand stands for, from 0.
  std::size_t place_of(Position character) const {
    const auto at = static_cast<std::size_t>(character - 1);
    return from_.empty() ? at : static_cast<std::size_t>(from_[at] - 1);
  }

  /// Where in the file a character that shows comes from; a completed CR from the end of the one
  /// before, which may have two places.
  Position shown_place(Position character) const {
    const std::size_t from = first_ + place_of(character);
    const bool wide = from < all_.size() && all_[from] > 0xFFFF && all_[from] != no_character;
    return at_[from] + (wide && code_at(text1, character) == 13 ? 2 : 0);
  }

  std::string seen(const Characters& text) const {
    std::string result;
    for (const char32_t code : text) {
      auto byte = unicode_ ? search_page_.byte_of(code) : static_cast<unsigned char>(code);
      if (search_.ignore_case) {
        byte = unicode_ ? search_page_.lower_table()[byte] : page_.lower(byte);
      }
      result += static_cast<char>(byte);
    }
    return result;
  }

  void get_file_chunk(Position& position) {
    if (chunk_start < 1) position += std::exchange(chunk_start, 1);
    const Position last_start = std::max<Position>(std::ssize(file_) - 30999, 1);
    last_chunk = chunk_start + 31000 > std::ssize(file_);
    if (last_chunk) position += std::exchange(chunk_start, last_start) - last_start;
    const Position end = std::min<Position>(chunk_start + 31000, std::ssize(file_) + 1);
    const auto behind = std::upper_bound(at_.begin(), at_.end(), end) - 1;
    // A chunk that begins the file holds its mark.
    const auto begin =
        std::max(std::upper_bound(at_.begin(), at_.end(), chunk_start), at_.begin() + 1) - 1;
    first_ = static_cast<std::size_t>(begin - at_.begin());
    if (first_ > 0) position += std::exchange(chunk_start, *begin) - *begin;
    chunk_text_ = part(all_, begin - at_.begin() + 1, behind - begin);
    file_location = *behind - 1;
    places_.clear();
    from_.clear();
    for (auto at = begin; at <= behind; ++at) places_.push_back(*at - chunk_start + 1);
  }

  /// Fills the text box; returns where the character at a position then is, with the caret there.
  Position fill_textbox(Position position) {
    text1 = chunk_text_ =
        literal_filter(chunk_text_, unicode_ ? "" : extension_, chunk_start, position, from_);
    chunk_pending = false;
    places_ = unit_places(text1);
    position = std::clamp<Position>(position, 1, std::ssize(text1) + 1);
    sel_start = places_[static_cast<std::size_t>(position - 1)] - 1;
    return position;
  }

  Position new_unicode_start(bool forward) const {
    const auto shared = static_cast<std::size_t>(max_term_len_ - 1);
    const std::size_t behind = first_ + shared;
    if (!forward && chunk_start == 1) return std::ssize(file_) - 30999;
    if (!forward) return std::min(at_[std::min(behind, all_.size())] - 31000, chunk_start - 1);
    if (last_chunk) return 1;
    const auto next = static_cast<std::size_t>(
        std::lower_bound(at_.begin(), at_.end(), file_location + 1) - at_.begin());
    return at_[next - std::min(next, shared)];
  }

  Position new_start(bool forward) const {
    if (unicode_) return new_unicode_start(forward);
    if (!forward) {
      return chunk_start == 1 ? std::ssize(file_) - 30999 : chunk_start + max_term_len_ - 31001;
    }
    const Position start = last_chunk ? 1 : file_location + 1;
    return start >= max_term_len_ ? start - (max_term_len_ - 1) : start;
  }

  bool is_whole(const std::string& text, Position at, std::size_t term) const {
    if (search_.search_type == search_phrase || !search_.whole_word[term]) return true;
    for (const Position beside : {at - 1, at + std::ssize(terms_[term])}) {
      const int code = code_at(text, beside);
      if (unicode_ && code >= 0 && search_.word[static_cast<std::size_t>(code)]) return false;
      if (unicode_) continue;
      if ((code | 32) >= 'a' && ((code | 32) <= 'z' || code >= 192)) return false;
    }
    return true;
  }

  /// The first whole occurrence from a position on, in steps of 1 or -1.
  Position get_hit(const std::string& in, Position at, int step, std::size_t term) const {
    const std::string& wanted = terms_[term];
    if (wanted.empty()) return 0;
    for (; at >= 1 && at <= std::ssize(in); at += step) {
      if (code_at(in, at) != code_at(wanted, 1)) continue;
      if (part(in, at, std::ssize(wanted)) == wanted && is_whole(in, at, term)) return at;
    }
    return 0;
  }

  /// The first hit at or after a position, or the last one at or before it.
  Position get_highlight_position(Position position, bool forward, Position& length) const {
    const std::string in = seen(chunk_text_);
    const int step = forward ? 1 : -1;
    if (!forward) position = std::min<Position>(position, std::ssize(chunk_text_));
    const bool near = search_.search_type == search_near;
    Position best = 0;
    for (std::size_t term = 0; term < (near ? 1 : terms_.size()); ++term) {
      Position at = get_hit(in, position, step, term);
      while (near && at != 0 && !passes_proximity(at)) {
        at = get_hit(in, at + step, step, term);
      }
      if (forward ? at == 0 || at > (best == 0 ? 32500 : best) : at <= best) continue;
      best = at;
      length = std::ssize(terms_[term]);
    }
    return best;
  }

  bool passes_proximity(Position position) const {
    if (search_.last_term == 0) return true;
    const Position size = std::ssize(chunk_text_);
    const Position start = position - search_.prox_before;
    Position in_file = start + file_location - size;
    if (unicode_) {
      in_file = static_cast<Position>(first_ + place_of(position)) + 1 - search_.prox_before;
      in_file = std::max<Position>(in_file, 1);
    }
    Characters window = part(all_, in_file, search_.window_len);
    if (start < 1) {
      window = part(all_, std::max<Position>(in_file, 1), search_.window_len);
    } else if (start + search_.window_len - 1 <= size) {
      window = part(chunk_text_, start, search_.window_len);
    }
    if (window.empty()) return true;
    std::size_t found = 0;
    for (std::size_t term = 1; term < terms_.size(); ++term)
      found += get_hit(seen(window), 1, 1, term) != 0;
    return search_.prox_all ? found == terms_.size() - 1 : found > 0;
  }

  const std::string &file_, extension_;
  const bool unicode_;
  const SearchPage search_page_;
  const CompiledSearch search_;
  const CodePage& page_;
  const std::vector<std::string>& terms_ = search_.terms;  ///< or the phrase alone
  Position max_term_len_ = 1;
  Characters all_;         ///< of the file
  Positions at_;           ///< their places in it, and its end
  std::size_t first_ = 0;  ///< of them in the chunk
  Characters chunk_text_;
  Positions places_;  ///< of the characters of chunk_text_: bytes as read, units as they show
  Positions from_;    ///< literal_filter's, while the text is what shows
};

}  // namespace tallowmere
