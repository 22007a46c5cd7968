#include "viewer/hit_counter.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "viewer/character_text.h"
#include "viewer/chunk_hits.h"
#include "viewer/display_filter.h"

namespace tallowmere {

namespace {

/// Bytes that are read at once, besides what the edges need.
constexpr std::int64_t block_length = 1 << 20;

// Occurrences in one step: a few milliseconds' worth, even where each has a window of NEAR.
constexpr int near_step = 256;
constexpr int plain_step = 8192;

}  // namespace

bool HitCounter::can_count(const HitFinder& finder, std::int64_t file_length) {
  return !finder.empty() && file_length <= longest_file &&
         finder.max_term_len() * longest_character <= chunk_length / 2;
}

HitCounter::HitCounter(const HitFinder& finder, const CodePage& page, TextEncoding encoding,
                       std::int64_t file_length, std::string extension)
    : finder_(finder),
      page_(page),
      extension_(std::move(extension)),
      source_(encoding, file_length),
      places_(static_cast<std::size_t>(file_length / 64 + 1)) {}

FilePiece HitCounter::wanted() const {
  if (complete_ || in_chunk_) return {};
  const std::int64_t beside = bytes_beside(finder_) + longest_character;
  // The file's last chunk begins before the place at which it is asked for.
  const std::int64_t last_start = source_.file_length() - chunk_length + 1;
  const std::int64_t start = std::max<std::int64_t>(std::min(next_start_, last_start) - beside, 1);
  if (source_.holds(start, chunk_length + 2 * beside)) return {};
  return {start, std::min(block_length + 2 * beside, source_.file_length() + 1 - start)};
}

bool HitCounter::hold(const FilePiece& piece, std::string bytes) {
  const bool all = std::ssize(bytes) == piece.length;
  source_.hold(piece.position, std::move(bytes));
  return all;
}

void HitCounter::step() {
  if (!in_chunk_) begin_chunk();
  const std::int64_t end = (shown_ ? chunk_.length() : std::ssize(chunk_.chunk_text)) + 1;
  const int most = finder_.reach() > 0 ? near_step : plain_step;
  const HitRange range =
      hits_in_chunk(source_, chunk_, finder_, at_, end, shown_ ? most : near_step);
  at_ = range.next;
  if (!shown_ && !range.hits.empty()) {
    show_chunk(range.hits.front().position);
  } else if (shown_) {
    for (const Hit& hit : range.hits) add(hit.position);
  }
  const std::int64_t now_end = (shown_ ? chunk_.length() : std::ssize(chunk_.chunk_text)) + 1;
  if (at_ >= now_end) end_chunk();
}

void HitCounter::begin_chunk() {
  at_ = 1;
  chunk_ = source_.read_chunk(next_start_, at_);
  in_chunk_ = true;
  shown_ = false;
}

/// Goes over to the chunk as it shows: its first hit is found in the bytes as read, the others in
/// what shows.
void HitCounter::show_chunk(std::int64_t position) {
  chunk_ = filter_chunk(chunk_, extension_, &page_);
  at_ = chunk_.character_on_show(position);
  add(at_);
  ++at_;
  shown_ = true;
}

void HitCounter::end_chunk() {
  complete_ = chunk_.last_chunk;
  next_start_ = source_.next_chunk_start(chunk_, finder_.max_term_len());
  in_chunk_ = false;
}

/// Counts a hit once; `position` counts from 1 in the chunk as it shows.
void HitCounter::add(std::int64_t position) {
  const auto place =
      static_cast<std::size_t>(chunk_.file_position(static_cast<int>(position - 1)) - 1);
  std::uint64_t& word = places_[place / 64];
  const std::uint64_t bit = std::uint64_t{1} << place % 64;
  if ((word & bit) == 0) ++total_;
  word |= bit;
}

/// Hits are known only before the next chunk's beginning, as that chunk may hold more.
std::int64_t HitCounter::ordinal(std::int64_t position) const {
  const std::int64_t known = complete_ ? source_.file_length() + 1 : next_start_;
  if (position < 1 || position >= known) return 0;
  const auto place = static_cast<std::size_t>(position - 1);
  const std::size_t word = place / 64;
  const std::uint64_t bit = std::uint64_t{1} << place % 64;
  if ((places_[word] & bit) == 0) return 0;
  std::int64_t count = std::popcount(places_[word] & (bit | (bit - 1)));
  for (std::size_t i = 0; i < word; ++i) count += std::popcount(places_[i]);
  return count;
}

}  // namespace tallowmere
