#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "engine/byte_search.h"
#include "engine/file_text.h"

namespace tallowmere {

/// The text of a file as a sequence of chunks, each with some bytes of the text on either side of
/// it in the same piece of memory. A file that fits into one chunk costs one read.
class FileChunks {
 public:
  static constexpr std::size_t chunk_size = 63000;

  /// Keeps `lookback` bytes before and `lookahead` bytes after each chunk in memory, where the text
  /// has them; at least 1 after it, which also shows whether there is a further chunk.
  FileChunks(std::size_t lookback, std::size_t lookahead);

  /// Loads the first chunk. An empty text has one empty chunk.
  std::optional<SystemError> first(FileText& file);

  /// True when the text goes on after the chunk.
  bool more() const { return after_ > 0; }

  /// Loads the next chunk; to be called only when there is more.
  std::optional<SystemError> next(FileText& file);

  const Byte* begin() const { return base_; }
  const Byte* end() const { return base_ + size_; }
  std::size_t size() const { return size_; }

  /// Returns the first byte of the text that is in memory, at or before the chunk's beginning.
  const Byte* memory_begin() const { return base_ - before_; }
  /// Returns one past the last byte of the text that is in memory.
  const Byte* memory_end() const { return base_ + size_ + after_; }

 private:
  std::optional<SystemError> fill(FileText& file, std::size_t kept);

  std::size_t lookback_;
  std::size_t lookahead_;
  std::vector<Byte> buffer_;
  Byte* base_;  ///< where every chunk begins in the buffer
  std::size_t size_ = 0;
  std::size_t before_ = 0;
  std::size_t after_ = 0;
};

}  // namespace tallowmere
