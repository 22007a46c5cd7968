#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/byte_search.h"

namespace tallowmere {

/// Several patterns that are searched for in one pass over the text.
///
/// Each pattern is represented by its three rarest neighbouring bytes and belongs to one of eight
/// buckets. For each of the three bytes, two tables of 16 entries map the byte's halves to the
/// buckets that it may belong to; a place at which all six entries share a bucket is compared in
/// full. (The "Teddy" algorithm of Geoffrey Langdale's Hyperscan, in 128 bits. It needs SSSE3,
/// which SSE2 cannot replace: see usable().)
class MultiPattern {
 public:
  enum class Outcome {
    found,
    none,
    too_costly  ///< comparing took too long; search for the patterns one by one
  };

  /// Prepares the search. `patterns` must outlive this object and stay where they are; empty ones
  /// are not allowed.
  explicit MultiPattern(const std::vector<const BytePattern*>& patterns);

  /// True when this machine has the instructions that make it fast.
  static bool usable();

  /// From this many patterns on, one pass beats a pass for each.
  static constexpr std::size_t fewest = 3;
  /// Beyond this many, places to compare become too frequent; several objects are then faster.
  static constexpr std::size_t most = 16;

  /// Looks in [begin, end) for an occurrence of any pattern that `accept` takes; `accept` gets the
  /// pattern's index and the place.
  template <typename Accept>
  Outcome find_any(const Byte* begin, const Byte* end, Accept&& accept) const {
    std::uint64_t work = 0;
    Place place{begin, 0};
    for (; next_place(place, end); ++place.at) {
      for (unsigned buckets = place.buckets; buckets != 0; buckets &= buckets - 1) {
        for (const Entry& entry : buckets_[static_cast<std::size_t>(__builtin_ctz(buckets))]) {
          if (!fits(entry, place.at, begin, end)) continue;
          const Byte* start = place.at - entry.offset;
          if (entry.pattern->equal_at(start, work) && accept(entry.index, start)) {
            return Outcome::found;
          }
        }
      }
      if (work > BytePattern::work_allowed(static_cast<std::size_t>(place.at - begin))) {
        return Outcome::too_costly;
      }
    }
    return Outcome::none;
  }

 private:
  static constexpr std::size_t gram = 3;

  struct Entry {
    std::size_t index;
    const BytePattern* pattern;
    std::size_t offset;  ///< of its three bytes
  };

  /// A place at which the three bytes of a pattern of one of these buckets may occur.
  struct Place {
    const Byte* at;
    unsigned buckets;
  };

  using HalfTable = std::array<Byte, 16>;  ///< which buckets a half byte may belong to

  static bool fits(const Entry& entry, const Byte* at, const Byte* begin, const Byte* end) {
    return static_cast<std::size_t>(at - begin) >= entry.offset &&
           static_cast<std::size_t>(end - at) >= entry.pattern->length() - entry.offset;
  }

  void add(const Entry& entry, unsigned bucket);
  bool next_place(Place& place, const Byte* end) const;
  bool next_place_vector(Place& place, const Byte* end) const;
  unsigned buckets_at(const Byte* at, const Byte* end) const;

  std::array<HalfTable, gram> low_{};
  std::array<HalfTable, gram> high_{};
  std::array<std::vector<Entry>, 8> buckets_;
};

}  // namespace tallowmere
