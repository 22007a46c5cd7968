#include "viewer/display_filter.h"

#include <algorithm>

namespace tallowmere {

namespace {

constexpr char cr = '\r';
constexpr char lf = '\n';
constexpr char dot = '.';

constexpr std::int64_t write_header_length = 128;

bool is_printable_ascii(unsigned char byte) {
  return byte >= 32 && byte <= 126;
}

/// One pass over a chunk; `at_` is the byte under consideration.
class Filter {
 public:
  Filter(std::string_view raw, std::int64_t header_end) : raw_(raw), header_end_(header_end) {
    out_.text.reserve(raw.size() + inserted_breaks_limit);
    out_.origin.reserve(raw.size() + inserted_breaks_limit);
    out_.crowded_from = static_cast<std::int32_t>(raw.size());
  }

  FilteredChunk run() {
    for (at_ = 0; at_ < raw_.size(); ++at_) filter_byte();
    return std::move(out_);
  }

 private:
  unsigned char byte_at(std::size_t index) const {
    if (static_cast<std::int64_t>(index) == header_end_) return cr;
    return static_cast<unsigned char>(raw_[index]);
  }
  bool first() const { return at_ == 0; }
  bool last() const { return at_ + 1 == raw_.size(); }
  unsigned char before() const { return byte_at(at_ - 1); }
  unsigned char next() const { return byte_at(at_ + 1); }

  /// A NUL behind printable text ends a line as a CR does.
  bool ends_line_before() const {
    if (first()) return false;
    return before() == cr || (before() == 0 && at_ >= 2 && is_printable_ascii(byte_at(at_ - 2)));
  }

  void filter_byte() {
    const unsigned char byte = byte_at(at_);
    if (byte >= 32 || byte == '\t') {
      put(static_cast<char>(byte));
    } else if (byte == cr) {
      filter_cr();
    } else if (byte == lf) {
      filter_lf();
    } else if (byte == 0) {
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
    } else if (ends_line_before()) {
      put(lf);
    } else if (may_insert()) {
      put(cr, at_ - 1);  // so that the byte itself stands at the LF
      put(lf);
    }
  }

  void filter_nul() {
    if (first()) {
      put(dot);
    } else if (is_printable_ascii(before())) {
      filter_cr();
    } else if (last() || !is_printable_ascii(next())) {
      put(dot);
    } else {
      // A break between binary and text; it takes the place of a dot and is not counted.
      if (!out_.text.empty()) out_.text.back() = cr;
      put(lf);
    }
  }

  void put(char character) { put(character, at_); }
  void put(char character, std::size_t origin) {
    out_.text.push_back(character);
    out_.origin.push_back(static_cast<std::int32_t>(origin));
  }

  /// Counts a break to be completed; false when it is to be dropped.
  bool may_insert() {
    if (inserted_ == inserted_breaks_limit) {
      out_.crowded_from = std::min(out_.crowded_from, static_cast<std::int32_t>(at_));
      return false;
    }
    ++inserted_;
    return true;
  }

  std::string_view raw_;
  std::int64_t header_end_;
  FilteredChunk out_;
  std::size_t at_ = 0;
  int inserted_ = 0;
};

}  // namespace

std::int64_t FilteredChunk::position_of(std::int64_t byte) const {
  const auto found = std::lower_bound(origin.begin(), origin.end(), byte);
  return found - origin.begin();
}

FilteredChunk filter_chunk(std::string_view raw, std::int64_t header_end) {
  return Filter(raw, header_end).run();
}

std::int64_t write_header_end(std::string_view raw, std::string_view extension,
                              std::int64_t chunk_start) {
  if (extension != "wri" || chunk_start > write_header_length) return -1;
  const bool is_write = raw.size() >= 2 && raw[0] == '1' && raw[1] == '\xBE';
  const std::int64_t end = write_header_length - chunk_start;
  return is_write && end < static_cast<std::int64_t>(raw.size()) ? end : -1;
}

}  // namespace tallowmere
