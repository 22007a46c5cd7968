#include "viewer/display_filter.h"

#include <algorithm>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "viewer/character_text.h"

namespace tallowmere {

namespace {

constexpr char cr = '\r';
constexpr char lf = '\n';
constexpr char nul = '\0';
constexpr char dot = '.';

constexpr std::int64_t write_header_length = 128;

// A character is a byte of the code page, or a unit of UTF-16.
template <class Character>
bool is_printable_ascii(Character character) {
  return character >= 32 && character <= 126;
}

/// True for a CR, and for a NUL after printable text, which ends a line as a CR does.
template <class Text>
bool acts_as_cr(const Text& raw, std::size_t at) {
  return raw[at] == cr || (raw[at] == nul && at >= 1 && is_printable_ascii(raw[at - 1]));
}

/// Returns where the header of a Windows Write file ends in the chunk; -1 when this is no such file
/// or the place is not in the chunk.
std::int64_t write_header_end(const Chunk& read, std::string_view extension) {
  const std::string& raw = read.chunk_text;
  if (extension != "wri" || read.chunk_start > write_header_length) return -1;
  const bool is_write = raw.size() >= 2 && raw[0] == '1' && raw[1] == '\xBE';
  const std::int64_t end = write_header_length - read.chunk_start;
  return is_write && end < std::ssize(raw) ? end : -1;
}

/// One pass over a text; `at_` is the current character. `origin` and crowded_from() count the
/// characters of that text.
template <class Text>
class Filter {
 public:
  using Character = typename Text::value_type;

  explicit Filter(const Text& raw) : raw_(raw), crowded_from_(raw.size()) {
    text.reserve(raw_.size() + inserted_breaks_limit);
    origin.reserve(raw_.size() + inserted_breaks_limit + 1);
    for (at_ = 0; at_ < raw_.size(); ++at_) filter_character();
    origin.push_back(static_cast<std::int32_t>(raw_.size()));
  }

  Text text;
  std::vector<std::int32_t> origin;
  std::size_t crowded_from() const { return crowded_from_; }

 private:
  bool first() const { return at_ == 0; }
  bool last() const { return at_ + 1 == raw_.size(); }
  Character next() const { return raw_[at_ + 1]; }

  void filter_character() {
    const Character character = raw_[at_];
    if (static_cast<std::make_unsigned_t<Character>>(character) >= 32 || character == '\t') {
      put(character);
    } else if (acts_as_cr(raw_, at_)) {
      filter_cr();
    } else if (character == lf) {
      filter_lf();
    } else if (character == nul) {
      filter_nul();
    } else {
      put(dot);
    }
  }

  void filter_cr() {
    if (last()) {
      put(dot);
    } else if (next() == lf) {
      put(cr);
    } else if (may_insert()) {
      put(cr);
      put(lf);
    }
  }

  void filter_lf() {
    if (first()) {
      put(dot);
    } else if (acts_as_cr(raw_, at_ - 1)) {
      put(lf);
    } else if (may_insert()) {
      put(cr, at_ - 1);  // so that the byte itself leads to the LF
      put(lf);
    }
  }

  void filter_nul() {
    if (first() || last() || !is_printable_ascii(next())) {
      put(dot);
    } else {
      // This break between binary and text replaces a dot and is not counted.
      if (!text.empty()) overwrite_last(cr);
      put(lf);
    }
  }

  void overwrite_last(Character character) {
    if constexpr (std::is_same_v<Character, char16_t>) {
      if (is_second_of_pair(text, text.size() - 1)) {
        text.pop_back();
        origin.pop_back();
      }
    }
    text.back() = character;
  }

  void put(Character character) { put(character, at_); }
  void put(Character character, std::size_t from) {
    text.push_back(character);
    origin.push_back(static_cast<std::int32_t>(from));
  }

  /// Counts a break that is completed; false when it is dropped instead.
  bool may_insert() {
    if (inserted_ < inserted_breaks_limit) {
      ++inserted_;
      return true;
    }
    crowded_from_ = std::min(crowded_from_, at_);
    return false;
  }

  const Text& raw_;
  std::size_t crowded_from_;
  std::size_t at_ = 0;
  int inserted_ = 0;
};

Chunk filter_bytes(const Chunk& read, const std::string& raw) {
  Filter filter(raw);
  Chunk out{read.chunk_start, read.file_location, read.last_chunk, std::move(filter.text),
            std::move(filter.origin)};
  out.crowded_from = out.chunk_start + static_cast<std::int64_t>(filter.crowded_from());
  return out;
}

// Filters the decoded units; origins then go back from the characters shown to the bytes.
Chunk filter_units(const Chunk& read, const CodePage& page) {
  const UnitText decoded = to_units(read.chunk_text, read.text_begin(), read.encoding, page);
  Filter filter(decoded.units);
  const auto byte_of = [&](std::size_t unit) { return decoded.origin[unit]; };
  Chunk out{read.chunk_start, read.file_location, read.last_chunk, {}, std::move(filter.origin)};
  for (std::int32_t& from : out.origin) from = byte_of(static_cast<std::size_t>(from));
  out.crowded_from = out.chunk_start + byte_of(filter.crowded_from());
  out.encoding = read.encoding;
  out.units = std::move(filter.text);
  return out;
}

template <class Text>
bool line_begins(const Text& raw, std::size_t at) {
  if (raw[at - 1] == lf) return true;
  if (acts_as_cr(raw, at - 1)) return raw[at] != lf;
  return raw[at - 1] == nul && is_printable_ascii(raw[at]);
}

}  // namespace

Chunk filter_chunk(const Chunk& read, std::string_view extension, const CodePage* page) {
  if (read.is_unicode()) return filter_units(read, *page);
  const std::int64_t header_end = write_header_end(read, extension);
  if (header_end < 0) return filter_bytes(read, read.chunk_text);
  std::string parted = read.chunk_text;
  parted[static_cast<std::size_t>(header_end)] = cr;
  return filter_bytes(read, parted);
}

bool begins_line(std::string_view raw, std::size_t at) {
  return line_begins(raw, at);
}

bool begins_line(std::u16string_view raw, std::size_t at) {
  return line_begins(raw, at);
}

}  // namespace tallowmere
