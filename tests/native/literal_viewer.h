#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "engine/compiled_search.h"

namespace tallowmere {

using Position = std::int64_t;  ///< 1-based; 0: none

inline std::string part(const std::string& text, Position from, Position count) {
  if (from < 1 || from > std::ssize(text) || count < 1) return "";
  return text.substr(static_cast<std::size_t>(from - 1), static_cast<std::size_t>(count));
}

inline int code_at(const std::string& text, Position at) {  // -1 outside
  const bool inside = at >= 1 && at <= std::ssize(text);
  return inside ? static_cast<unsigned char>(text[static_cast<std::size_t>(at - 1)]) : -1;
}

/// What the text box shows of a chunk. `position`, 1-based in the chunk, moves along.
inline std::string literal_filter(std::string chunk, const std::string& extension,
                                  Position chunk_start, Position& position) {
  const auto printable = [&](Position at) {
    return code_at(chunk, at) >= 32 && code_at(chunk, at) <= 126;
  };
  const Position size = std::ssize(chunk);
  if (extension == "wri" && chunk_start <= 128 && code_at(chunk, 1) == '1' &&
      code_at(chunk, 2) == 190 && 129 - chunk_start <= size) {
    chunk[static_cast<std::size_t>(128 - chunk_start)] = 13;
  }
  std::string out;
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
    out += "\r\n";
  };
  for (Position i = 1; i <= size; ++i) {
    const int before = code_at(chunk, i - 1);
    int c = code_at(chunk, i);
    if (c == 0 && printable(i - 1)) c = 13;
    if (c >= 32 || c == 9) {
      out += static_cast<char>(c);
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
  }
  return out;
}

/// The viewer and its steps from hit to hit as one would write them down without a thought for
/// speed: one-based positions, whole strings, every chunk and every window cut from the file.
class LiteralViewer {
 public:
  LiteralViewer(const std::string& file, const std::string& extension, const SearchCriteria& search,
                const CodePage& page)
      : file_(file), extension_(extension), search_(search, page), page_(page) {
    for (const std::string& term : terms_) {
      if (term.size() <= 31000) max_term_len_ = std::max<Position>(max_term_len_, std::ssize(term));
    }
  }

  std::string text1;
  Position sel_start = 0, sel_length = 0;
  Position chunk_start = 1, file_location = 1;
  bool last_chunk = true, chunk_pending = true;
  int beeps = 0, misses = 0;

  int scroll_value(Position length) const {
    const auto at = static_cast<double>(chunk_start + sel_start + length);
    return static_cast<int>(
        std::nearbyint(std::min(at / static_cast<double>(file_.size()), 1.0) * 100000));
  }

  void load_text_chunk(Position start, Position position) {
    chunk_start = start;
    get_file_chunk(position);
    fill_textbox(position);
    sel_start = std::clamp<Position>(position - 1, 0, std::ssize(text1));
    sel_length = 0;
  }

  void find(bool forward) {
    forward = forward || chunk_pending;
    if (search_.everything) return load_text_chunk(1, 1);
    const bool shown = !chunk_pending;
    const auto old = std::tuple(chunk_start, file_location, last_chunk, text1);
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
          std::tie(chunk_start, file_location, last_chunk, chunk_text_) = old;
          if (!forward) start = std::ssize(text1);
        }
      }
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
    if (chunk_pending && !in_text1()) fill_textbox(start);
    chunk_pending = false;
    sel_start = start - 1;
    sel_length = std::min(length, std::ssize(text1) - sel_start);
    if (wrapped) ++beeps;
  }

 private:
  std::string seen(std::string text) const {
    if (!search_.ignore_case) return text;
    for (char& c : text) c = static_cast<char>(page_.lower(static_cast<unsigned char>(c)));
    return text;
  }

  void get_file_chunk(Position& position) {
    if (chunk_start < 1) position += std::exchange(chunk_start, 1);
    const Position last_start = std::max<Position>(std::ssize(file_) - 30999, 1);
    last_chunk = chunk_start + 31000 > std::ssize(file_);
    if (last_chunk) position += std::exchange(chunk_start, last_start) - last_start;
    chunk_text_ = part(file_, chunk_start, 31000);
    file_location = chunk_start + std::ssize(chunk_text_) - 1;
  }

  void fill_textbox(Position& position) {
    text1 = chunk_text_ = literal_filter(chunk_text_, extension_, chunk_start, position);
    chunk_pending = false;
  }

  Position new_start(bool forward) const {
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

  /// The first hit at or behind a position, or the last one at or before it.
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
    const Position in_file = start + file_location - size;
    std::string window = part(file_, in_file, search_.window_len);
    if (start < 1) {
      window = part(file_, std::max<Position>(in_file, 1), search_.window_len);
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
  const CompiledSearch search_;
  const CodePage& page_;
  const std::vector<std::string>& terms_ = search_.terms;  ///< or the phrase alone
  Position max_term_len_ = 1;
  std::string chunk_text_;
};

}  // namespace tallowmere
