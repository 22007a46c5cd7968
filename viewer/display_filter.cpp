#include "viewer/display_filter.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tallowmere {

namespace {

constexpr char cr = '\r';
constexpr char lf = '\n';
constexpr char nul = '\0';
constexpr char dot = '.';

constexpr std::int64_t write_header_length = 128;

bool is_printable_ascii(char byte) {
  return byte >= 32 && byte <= 126;
}

/// A NUL behind printable text ends a line as a CR does.
bool acts_as_cr(std::string_view raw, std::size_t at) {
  return raw[at] == cr || (raw[at] == nul && at >= 1 && is_printable_ascii(raw[at - 1]));
}

/// Where the header of a Windows Write file ends in the chunk; -1 when this is no such file or the
/// place is not in the chunk.
std::int64_t write_header_end(const Chunk& read, std::string_view extension) {
  const std::string& raw = read.chunk_text;
  if (extension != "wri" || read.chunk_start > write_header_length) return -1;
  const bool is_write = raw.size() >= 2 && raw[0] == '1' && raw[1] == '\xBE';
  const std::int64_t end = write_header_length - read.chunk_start;
  return is_write && end < std::ssize(raw) ? end : -1;
}

/// One pass over a chunk; `at_` is the byte under consideration.
class Filter {
 public:
  explicit Filter(const Chunk& read) : raw_(read.chunk_text) {
    out_.chunk_start = read.chunk_start;
    out_.file_location = read.file_location;
    out_.last_chunk = read.last_chunk;
    out_.chunk_text.reserve(raw_.size() + inserted_breaks_limit);
    out_.origin.reserve(raw_.size() + inserted_breaks_limit + 1);
    out_.crowded_from = out_.chunk_start + std::ssize(raw_);
  }

  Chunk run() {
    for (at_ = 0; at_ < raw_.size(); ++at_) filter_byte();
    out_.origin.push_back(static_cast<std::int32_t>(raw_.size()));
    return std::move(out_);
  }

 private:
  bool first() const { return at_ == 0; }
  bool last() const { return at_ + 1 == raw_.size(); }
  char next() const { return raw_[at_ + 1]; }

  void filter_byte() {
    const char byte = raw_[at_];
    if (static_cast<unsigned char>(byte) >= 32 || byte == '\t') {
      put(byte);
    } else if (acts_as_cr(raw_, at_)) {
      filter_cr();
    } else if (byte == lf) {
      filter_lf();
    } else if (byte == nul) {
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
      put(cr, at_ - 1);  // so that the byte itself stands at the LF
      put(lf);
    }
  }

  void filter_nul() {
    if (first() || last() || !is_printable_ascii(next())) {
      put(dot);
    } else {
      // A break between binary and text; it takes the place of a dot and is not counted.
      if (!out_.chunk_text.empty()) out_.chunk_text.back() = cr;
      put(lf);
    }
  }

  void put(char character) { put(character, at_); }
  void put(char character, std::size_t origin) {
    out_.chunk_text.push_back(character);
    out_.origin.push_back(static_cast<std::int32_t>(origin));
  }

  /// Counts a break to be completed; false when it is to be dropped.
  bool may_insert() {
    if (inserted_ < inserted_breaks_limit) {
      ++inserted_;
      return true;
    }
    const std::int64_t here = out_.chunk_start + static_cast<std::int64_t>(at_);
    out_.crowded_from = std::min(out_.crowded_from, here);
    return false;
  }

  std::string_view raw_;
  Chunk out_;
  std::size_t at_ = 0;
  int inserted_ = 0;
};

}  // namespace

Chunk filter_chunk(const Chunk& read, std::string_view extension) {
  const std::int64_t header_end = write_header_end(read, extension);
  if (header_end < 0) return Filter(read).run();
  Chunk parted = read;
  parted.chunk_text[static_cast<std::size_t>(header_end)] = cr;
  return Filter(parted).run();
}

bool begins_line(std::string_view raw, std::size_t at) {
  if (raw[at - 1] == lf) return true;
  if (acts_as_cr(raw, at - 1)) return raw[at] != lf;
  return raw[at - 1] == nul && is_printable_ascii(raw[at]);
}

}  // namespace tallowmere
