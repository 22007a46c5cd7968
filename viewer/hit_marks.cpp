#include "viewer/hit_marks.h"

#include <algorithm>
#include <cstdint>

#include "viewer/chunk_hits.h"

namespace tallowmere {

namespace {

/// Characters that the windows of NEAR in one view may hold together.
constexpr std::int64_t window_limit = 12'000'000;

}  // namespace

const std::vector<TextSelection>& HitMarks::between(FileViewer& viewer, const HitFinder& finder,
                                                    int from, int to) {
  if (version_ == viewer.shown_version() && from >= from_ && to <= to_) return stretches_;
  version_ = viewer.shown_version();
  from_ = from;
  to_ = to;
  stretches_.clear();
  if (!finder.empty() && viewer.shows_chunk()) find(viewer, finder);
  return stretches_;
}

void HitMarks::find(FileViewer& viewer, const HitFinder& finder) {
  const Chunk& chunk = viewer.shown_chunk();
  const std::int64_t longest = finder.max_term_len() * (chunk.is_unicode() ? 2 : 1);
  const std::int64_t start = std::max<std::int64_t>(from_ + 2 - longest, 1);
  const std::int64_t end = std::min(to_, chunk.length()) + std::int64_t{1};
  const auto windows = std::clamp<std::int64_t>(
      window_limit / std::max<std::int64_t>(finder.reach(), 1), most / 60, most);
  HitRange range;
  try {
    range =
        hits_in_chunk(viewer.shown_source(), chunk, finder, start, end, static_cast<int>(windows));
  } catch (const NotHeld&) {
    return;  // the bytes beside the chunk could not be read
  }
  for (const Hit& hit : range.hits) {
    const auto first = static_cast<int>(hit.position - 1);
    const int behind = std::min(chunk.behind_characters(first, hit.length), chunk.length());
    if (stretches_.empty() || stretches_.back().start + stretches_.back().length < first) {
      stretches_.push_back({first, 0});
    }
    TextSelection& last = stretches_.back();
    last.length = std::max(last.length, behind - last.start);
  }
}

}  // namespace tallowmere
