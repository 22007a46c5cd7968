#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/file_system.h"

namespace tallowmere {

/// Reads pieces of one file through a large block in memory, so that many overlapping pieces in
/// either direction need few calls to the system. Closing the file drops the block; nothing of the
/// file or its folder then stays open.
class BlockReader {
 public:
  static constexpr std::int64_t block_length = 1 << 20;

  explicit BlockReader(const FileSystem& files) : files_(files) {}

  bool is_open() const { return file_ != nullptr; }
  std::optional<SystemError> open(const std::string& folder, std::string_view name);
  void close();

  /// Replaces `into` by `length` bytes from the 1-based `position`, fewer at the file's end.
  /// `length` must not exceed a block.
  std::optional<SystemError> read(std::int64_t position, std::int64_t length, std::string& into);
  /// True when reading this piece needs nothing from the disk.
  bool holds(std::int64_t position, std::int64_t length) const;

 private:
  std::optional<SystemError> load(std::int64_t position, std::int64_t length);

  /// How many bytes a first read takes: about one chunk.
  static constexpr std::int64_t first_length = 1 << 15;

  const FileSystem& files_;
  std::unique_ptr<FileReader> file_;  ///< null while none is open
  bool used_ = false;                 ///< something has been read since the file was opened
  std::vector<unsigned char> block_;
  std::int64_t block_start_ = 1;
  std::int64_t block_size_ = 0;
  bool block_ends_file_ = false;
};

}  // namespace tallowmere
