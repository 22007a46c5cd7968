#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "engine/text_encoding.h"
#include "viewer/chunk.h"

namespace tallowmere {

/// A file from which chunks and windows are read. Positions count bytes from 1.
class ChunkSource {
 public:
  virtual ~ChunkSource() = default;

  virtual TextEncoding encoding() const = 0;
  virtual std::int64_t file_length() const = 0;
  /// Reads `length` bytes of the file from a position, fewer at its end; none when they cannot be
  /// read.
  virtual std::string read_window(std::int64_t position, std::int64_t length) = 0;

  // These two are for Unicode files:
  /// Returns the file position `characters` characters after the one that begins at `position`, or
  /// before it when negative; as far as the file goes and can be read.
  std::int64_t step_characters(std::int64_t position, std::int64_t characters);
  /// Reads the bytes of `count` characters that begin `before` characters before the one at
  /// `position`, or with the file.
  std::string read_characters(std::int64_t position, std::int64_t before, std::int64_t count);

  /// Returns where a walk forward asks for the chunk after this one, so that both share so many
  /// characters less one; 1 after the last.
  std::int64_t next_chunk_start(const Chunk& chunk, std::int64_t shared_characters);

 protected:
  /// Returns where the first whole character begins in a window of the file that is at `position`.
  std::size_t text_begin(std::string_view window, std::int64_t position) const;
};

/// Thrown by a HeldSource, which never reads from a disk.
class NotHeld : public std::exception {};

/// A file of which one piece is in memory. Reading anything else throws NotHeld.
class HeldSource : public ChunkSource {
 public:
  HeldSource(TextEncoding encoding, std::int64_t file_length)
      : encoding_(encoding), file_length_(file_length) {}

  void hold(std::int64_t start, std::string bytes) {
    start_ = start;
    bytes_ = std::move(bytes);
  }
  /// True when this piece is in memory, as far as it lies inside the file.
  bool holds(std::int64_t position, std::int64_t length) const;

  TextEncoding encoding() const override { return encoding_; }
  std::int64_t file_length() const override { return file_length_; }
  std::string read_window(std::int64_t position, std::int64_t length) override;
  /// Returns the chunk asked for at `start`, as read; `position`, 1-based in it, moves along.
  Chunk read_chunk(std::int64_t start, std::int64_t& position);

 private:
  TextEncoding encoding_;
  std::int64_t file_length_;
  std::int64_t start_ = 1;
  std::string bytes_;
};

}  // namespace tallowmere
