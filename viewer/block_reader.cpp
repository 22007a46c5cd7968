#include "viewer/block_reader.h"

#include <algorithm>

namespace tallowmere {

std::optional<SystemError> BlockReader::open(const std::string& folder, std::string_view name) {
  close();
  file_ = files_.reader();
  auto error = file_->open(folder, name);
  if (error) close();
  return error;
}

void BlockReader::close() {
  file_.reset();
  used_ = false;
  block_size_ = 0;
  block_ends_file_ = false;
}

std::optional<SystemError> BlockReader::read(std::int64_t position, std::int64_t length,
                                             std::string& into) {
  into.clear();
  if (!holds(position, length)) {
    if (auto error = load(position, length)) return error;
  }
  const std::int64_t offset = position - block_start_;
  const auto count =
      static_cast<std::size_t>(std::clamp<std::int64_t>(block_size_ - offset, 0, length));
  if (count > 0) into.assign(reinterpret_cast<const char*>(block_.data()) + offset, count);
  return std::nullopt;
}

bool BlockReader::holds(std::int64_t position, std::int64_t length) const {
  const std::int64_t end = block_start_ + block_size_;
  return block_size_ > 0 && position >= block_start_ &&
         (position + length <= end || (block_ends_file_ && position < end));
}

// When a piece before the block is wanted, the reader goes backwards: the next block ends near it.
std::optional<SystemError> BlockReader::load(std::int64_t position, std::int64_t length) {
  const bool backwards = block_size_ > 0 && position < block_start_;
  // Windows around a hit reach a little back and forth from the chunks, which go one way.
  std::int64_t start = position;
  if (backwards) start = position + length + first_length - block_length;
  if (!backwards && used_) start = position - first_length;
  block_start_ = std::max<std::int64_t>(start, 1);
  block_size_ = 0;
  block_ends_file_ = false;
  // The first piece after opening is often the only one wanted.
  const std::int64_t wanted = used_ ? block_length : std::max(length, first_length);
  used_ = true;
  block_.resize(static_cast<std::size_t>(wanted));
  if (auto error = file_->seek(block_start_ - 1)) return error;
  std::size_t got = 0;
  if (auto error = file_->read(block_.data(), block_.size(), got)) {
    // A defect further on must not keep back what lies before it.
    block_start_ = position;
    if (length >= wanted) return error;
    if (auto again = file_->seek(position - 1)) return again;
    if (auto again = file_->read(block_.data(), static_cast<std::size_t>(length), got))
      return again;
    block_size_ = static_cast<std::int64_t>(got);
    block_ends_file_ = block_size_ < length;
    return std::nullopt;
  }
  block_size_ = static_cast<std::int64_t>(got);
  block_ends_file_ = block_size_ < wanted;
  return std::nullopt;
}

}  // namespace tallowmere
