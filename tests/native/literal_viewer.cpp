#include "tests/native/literal_viewer.h"

#include <algorithm>

namespace tallowmere {

namespace {

std::string part(const std::string& text, std::int64_t from, std::int64_t count) {
  if (from < 1 || from > std::ssize(text) || count < 1) return "";
  return text.substr(static_cast<std::size_t>(from - 1), static_cast<std::size_t>(count));
}

int code_at(const std::string& text, std::int64_t at) {  // -1 outside
  const std::string c = part(text, at, 1);
  return c.empty() ? -1 : static_cast<unsigned char>(c[0]);
}

bool printable(int code) {
  return code >= 32 && code <= 126;
}

bool is_letter(int code) {
  return (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z') || code >= 192;
}

}  // namespace

std::string literal_filter(std::string chunk, const std::string& extension,
                           std::int64_t chunk_start, std::int64_t& position) {
  const std::int64_t size = std::ssize(chunk);
  if (extension == "wri" && chunk_start <= 128 && code_at(chunk, 1) == '1' &&
      code_at(chunk, 2) == 190 && 129 - chunk_start <= size) {
    chunk[static_cast<std::size_t>(128 - chunk_start)] = 13;
  }
  std::string out;
  int insertions = 0;
  const std::int64_t asked = position;
  // A break to be completed, or dropped when there were too many.
  const auto complete = [&](std::int64_t at, bool moves) {
    if (insertions == 1500) {
      if (at < asked) --position;
      return;
    }
    ++insertions;
    if (moves) ++position;
    out += "\r\n";
  };
  for (std::int64_t i = 1; i <= size; ++i) {
    const int before = code_at(chunk, i - 1);
    const int next = code_at(chunk, i + 1);
    int c = code_at(chunk, i);
    if (c == 0 && i > 1 && printable(before)) c = 13;
    if (c >= 32 || c == 9) {
      out += static_cast<char>(c);
    } else if (c == 13 && i < size) {
      if (next == 10) {
        out += '\r';
      } else {
        complete(i, i < asked);
      }
    } else if (c == 10 && i > 1) {
      if (before == 13 || (before == 0 && i > 2 && printable(code_at(chunk, i - 2)))) {
        out += '\n';
      } else {
        complete(i, i <= asked);
      }
    } else if (c == 0 && i > 1 && i < size && printable(next)) {
      out.back() = '\r';
      out += '\n';
    } else {
      out += '.';
    }
  }
  return out;
}

std::string LiteralViewer::seen(std::string text) const {
  if (search_.ignore_case) {
    for (char& c : text) c = static_cast<char>(page_.lower(static_cast<unsigned char>(c)));
  }
  return text;
}

std::vector<std::string> LiteralViewer::terms() const {
  if (search_.search_type != search_phrase) return search_.terms;
  return {seen(search_.phrase.bytes)};
}

LiteralViewer::Position LiteralViewer::max_term_len() const {
  Position longest = 1;
  for (const std::string& term : terms()) {
    if (std::ssize(term) <= 31000) longest = std::max<Position>(longest, std::ssize(term));
  }
  return longest;
}

void LiteralViewer::get_file_chunk(Position& position) {
  if (chunk_start < 1) {
    position += chunk_start;
    chunk_start = 1;
  }
  const Position file_length = std::ssize(file_);
  last_chunk = chunk_start + 31000 > file_length;
  if (last_chunk) {
    const Position old_start = chunk_start;
    chunk_start = std::max<Position>(file_length - 30999, 1);
    position += old_start - chunk_start;
  }
  chunk_text_ = part(file_, chunk_start, 31000);
  file_location = chunk_start + std::ssize(chunk_text_) - 1;
}

void LiteralViewer::fill_textbox(Position& position) {
  text1 = literal_filter(chunk_text_, extension_, chunk_start, position);
  chunk_text_ = text1;
  chunk_pending = false;
}

void LiteralViewer::load_text_chunk(Position start, Position position) {
  chunk_start = start;
  get_file_chunk(position);
  fill_textbox(position);
  sel_start = std::clamp<Position>(position - 1, 0, std::ssize(text1));
  sel_length = 0;
}

LiteralViewer::Position LiteralViewer::new_start(bool forward) const {
  if (forward) {
    const Position start = last_chunk ? 1 : file_location + 1;
    return start >= max_term_len() ? start - (max_term_len() - 1) : start;
  }
  return chunk_start == 1 ? std::ssize(file_) - 30999 : chunk_start + max_term_len() - 31001;
}

void LiteralViewer::find(bool forward) {
  if (search_.criteria.empty()) return load_text_chunk(1, 1);
  const bool shown = !chunk_pending;
  const Position old_start = chunk_start;
  const Position old_location = file_location;
  const bool old_last = last_chunk;
  const auto in_text1 = [&](Position start, bool wrapped) {
    return shown && wrapped && old_start == 1 && start <= 1;
  };
  bool wrapped = false;
  Position start = forward ? sel_start + 2 : sel_start;
  Position length = 0;
  while (true) {
    if (chunk_pending) {
      const Position next = new_start(forward);
      start = forward ? 1 : 31000;
      if (in_text1(next, wrapped)) {
        chunk_start = 1;
        file_location = old_location;
        last_chunk = old_last;
        chunk_text_ = text1;
        if (!forward) start = std::ssize(text1);
      } else {
        chunk_start = next;
        get_file_chunk(start);
      }
    }
    forward ? get_highlight_position(start, length) : get_prev_highlight(start, length);
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
  if (chunk_pending && !in_text1(chunk_start, wrapped)) fill_textbox(start);
  chunk_pending = false;
  sel_start = start - 1;
  sel_length = std::min(length, std::ssize(text1) - sel_start);
  if (wrapped) ++beeps;
}

bool LiteralViewer::is_whole(const std::string& text, Position at, std::size_t term) const {
  if (search_.search_type == search_phrase || !search_.whole_word[term]) return true;
  return !is_letter(code_at(text, at - 1)) &&
         !is_letter(code_at(text, at + std::ssize(search_.terms[term])));
}

LiteralViewer::Position LiteralViewer::get_hit(const std::string& text, Position start,
                                               std::size_t term) const {
  const std::string wanted = terms()[term];
  const std::string in = seen(text);
  if (wanted.empty() || start > std::ssize(in)) return 0;
  std::size_t found = in.find(wanted, static_cast<std::size_t>(start - 1));
  while (found != std::string::npos && !is_whole(text, static_cast<Position>(found) + 1, term)) {
    found = in.find(wanted, found + 1);
  }
  return static_cast<Position>(found + 1);
}

LiteralViewer::Position LiteralViewer::get_prev_hit(Position start, std::size_t term) const {
  const std::string wanted = terms()[term];
  const std::string in = seen(chunk_text_);
  if (wanted.empty()) return 0;
  for (; start >= 1; --start) {
    const std::size_t found = in.rfind(wanted, static_cast<std::size_t>(start - 1));
    if (found == std::string::npos) return 0;
    start = static_cast<Position>(found) + 1;
    if (is_whole(chunk_text_, start, term)) return start;
  }
  return 0;
}

void LiteralViewer::get_highlight_position(Position& position, Position& length) const {
  Position best = 0;
  if (search_.search_type == search_near) {
    best = get_hit(chunk_text_, position, 0);
    while (best != 0 && !passes_proximity(best)) best = get_hit(chunk_text_, best + 1, 0);
    length = std::ssize(terms()[0]);
  } else {
    for (std::size_t term = 0; term < terms().size(); ++term) {
      const Position at = get_hit(chunk_text_, position, term);
      if (at == 0 || at > (best == 0 ? 32500 : best)) continue;
      best = at;
      length = std::ssize(terms()[term]);
    }
  }
  position = best;
}

void LiteralViewer::get_prev_highlight(Position& position, Position& length) const {
  position = std::min<Position>(position, std::ssize(chunk_text_));
  Position best = 0;
  if (search_.search_type == search_near) {
    best = get_prev_hit(position, 0);
    while (best != 0 && !passes_proximity(best)) best = get_prev_hit(best - 1, 0);
    length = std::ssize(terms()[0]);
  } else {
    for (std::size_t term = 0; term < terms().size(); ++term) {
      const Position at = get_prev_hit(position, term);
      if (at <= best) continue;
      best = at;
      length = std::ssize(terms()[term]);
    }
  }
  position = best;
}

std::string LiteralViewer::proximity_window(Position position) const {
  const Position size = std::ssize(chunk_text_);
  const Position start = position - search_.prox_before;
  const Position in_file = start + file_location - size;
  if (position <= search_.prox_before) {
    return part(file_, std::max<Position>(in_file, 1), search_.window_len);
  }
  if (start + search_.window_len - 1 <= size) return part(chunk_text_, start, search_.window_len);
  return part(file_, in_file, search_.window_len);
}

bool LiteralViewer::passes_proximity(Position position) const {
  if (search_.last_term == 0) return true;
  const std::string window = proximity_window(position);
  if (window.empty()) return true;
  std::size_t found = 0;
  for (std::size_t term = 1; term < terms().size(); ++term) found += get_hit(window, 1, term) != 0;
  return search_.prox_all ? found == terms().size() - 1 : found > 0;
}

}  // namespace tallowmere
