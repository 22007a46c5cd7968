#include "engine/multi_search.h"

#include <algorithm>
#include <cassert>

#if defined(__x86_64__) || defined(__i386__)
#include <tmmintrin.h>
#define TALLOWMERE_SSSE3 1
#endif

namespace tallowmere {

namespace {

/// Returns where the rarest `gram` neighbouring bytes of a pattern begin.
std::size_t rarest_gram(const BytePattern& pattern, std::size_t gram) {
  if (pattern.length() <= gram) return 0;
  const auto cost = [&](std::size_t start) {
    int sum = 0;
    for (std::size_t i = 0; i < gram; ++i) sum += pattern.rank_at(start + i);
    return sum;
  };
  std::size_t best = 0;
  for (std::size_t start = 1; start + gram <= pattern.length(); ++start) {
    if (cost(start) < cost(best)) best = start;
  }
  return best;
}

}  // namespace

MultiPattern::MultiPattern(const std::vector<const BytePattern*>& patterns) {
  for (std::size_t i = 0; i < patterns.size(); ++i) {
    assert(patterns[i]->length() > 0);
    add({i, patterns[i], rarest_gram(*patterns[i], gram)},
        static_cast<unsigned>(i % buckets_.size()));
  }
}

void MultiPattern::add(const Entry& entry, unsigned bucket) {
  const auto bit = static_cast<Byte>(1u << bucket);
  for (std::size_t i = 0; i < gram; ++i) {
    // A pattern that is shorter than three bytes takes any byte after it.
    const bool any = entry.offset + i >= entry.pattern->length();
    for (unsigned byte = 0; byte < 256; ++byte) {
      if (!any && !entry.pattern->byte_fits(entry.offset + i, static_cast<Byte>(byte))) continue;
      low_[i][byte & 15] |= bit;
      high_[i][byte >> 4] |= bit;
    }
  }
  buckets_[bucket].push_back(entry);
}

bool MultiPattern::next_place(Place& place, const Byte* end) const {
  if (next_place_vector(place, end)) return true;
  for (; place.at < end; ++place.at) {
    place.buckets = buckets_at(place.at, end);
    if (place.buckets != 0) return true;
  }
  return false;
}

unsigned MultiPattern::buckets_at(const Byte* at, const Byte* end) const {
  unsigned buckets = 0xFF;
  for (std::size_t i = 0; i < gram && at + i < end; ++i) {
    buckets &= low_[i][at[i] & 15] & high_[i][at[i] >> 4];
  }
  return buckets;
}

#if defined(TALLOWMERE_SSSE3)

bool MultiPattern::usable() {
  return __builtin_cpu_supports("ssse3");
}

namespace {

__m128i load(const Byte* from) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

/// The half tables in registers, and the results of the block before the current one.
struct GramScan {
  __m128i low_0, low_1, low_2, high_0, high_1;
  __m128i first_before, second_before;
};

/// Returns, for each of the 16 bytes at `at`, the buckets of the grams that may end there. The
/// block is looked up once; its results for the first and second byte of a gram are shifted to the
/// gram's end, across blocks. The upper half of the third byte is left to the full comparison.
__attribute__((target("ssse3"), always_inline)) inline __m128i grams_ending(GramScan& scan,
                                                                            const Byte* at) {
  const __m128i half = _mm_set1_epi8(15);
  const __m128i text = load(at);
  const __m128i low = _mm_and_si128(text, half);
  const __m128i high = _mm_and_si128(_mm_srli_epi16(text, 4), half);
  const __m128i first =
      _mm_and_si128(_mm_shuffle_epi8(scan.low_0, low), _mm_shuffle_epi8(scan.high_0, high));
  const __m128i second =
      _mm_and_si128(_mm_shuffle_epi8(scan.low_1, low), _mm_shuffle_epi8(scan.high_1, high));
  const __m128i both = _mm_and_si128(_mm_alignr_epi8(first, scan.first_before, 14),
                                     _mm_alignr_epi8(second, scan.second_before, 15));
  scan.first_before = first;
  scan.second_before = second;
  return _mm_and_si128(both, _mm_shuffle_epi8(scan.low_2, low));
}

/// Returns the lanes of `buckets` that are not zero, a bit each.
unsigned filled_lanes(__m128i buckets) {
  const __m128i empty = _mm_cmpeq_epi8(buckets, _mm_setzero_si128());
  return static_cast<unsigned>(_mm_movemask_epi8(empty)) ^ 0xFFFF;
}

}  // namespace

// Leaves fewer than 34 bytes at the end to the caller.
__attribute__((target("ssse3"))) bool MultiPattern::next_place_vector(Place& place,
                                                                      const Byte* end) const {
  const __m128i zero = _mm_setzero_si128();
  GramScan scan{load(low_[0].data()),
                load(low_[1].data()),
                load(low_[2].data()),
                load(high_[0].data()),
                load(high_[1].data()),
                zero,
                zero};
  const Byte* at = place.at;
  for (; end - at >= 32; at += 32) {
    const __m128i front = grams_ending(scan, at);
    const __m128i back = grams_ending(scan, at + 16);
    if (filled_lanes(_mm_or_si128(front, back)) == 0) continue;
    alignas(16) Byte lanes[32];
    _mm_store_si128(reinterpret_cast<__m128i*>(lanes), front);
    _mm_store_si128(reinterpret_cast<__m128i*>(lanes + 16), back);
    const int lane = __builtin_ctz(filled_lanes(front) | filled_lanes(back) << 16);
    place.at = at + lane - 2;
    place.buckets = lanes[lane];
    return true;
  }
  // A gram may begin in the last two bytes that were looked at.
  if (at != place.at) place.at = at - 2;
  return false;
}

#else

bool MultiPattern::usable() {
  return false;
}

bool MultiPattern::next_place_vector(Place&, const Byte*) const {
  return false;
}

#endif

}  // namespace tallowmere
