#include "engine/file_chunks.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <cstring>

namespace tallowmere {

namespace {

constexpr std::size_t cache_line = 64;

}  // namespace

FileChunks::FileChunks(std::size_t lookback, std::size_t lookahead)
    : lookback_(lookback),
      lookahead_(std::max<std::size_t>(lookahead, 1)),
      buffer_(lookback_ + cache_line + chunk_size + lookahead_) {
  // Chunks that begin a cache line are searched a few percent faster.
  const auto earliest = reinterpret_cast<std::uintptr_t>(buffer_.data()) + lookback_;
  base_ = buffer_.data() + lookback_ + (cache_line - earliest % cache_line) % cache_line;
}

std::optional<SystemError> FileChunks::first(FileText& file) {
  before_ = 0;
  return fill(file, 0);
}

std::optional<SystemError> FileChunks::next(FileText& file) {
  assert(more());
  const std::size_t kept = after_;
  const std::size_t before = std::min(lookback_, before_ + chunk_size);
  std::memmove(base_ - before, base_ + chunk_size - before, before + kept);
  before_ = before;
  return fill(file, kept);
}

// Reads the rest of the chunk, of which `kept` bytes are in place already.
std::optional<SystemError> FileChunks::fill(FileText& file, std::size_t kept) {
  std::size_t got = 0;
  const auto error = file.read(base_ + kept, chunk_size + lookahead_ - kept, got);
  const std::size_t present = kept + got;
  size_ = std::min(present, chunk_size);
  after_ = present - size_;
  return error;
}

}  // namespace tallowmere
