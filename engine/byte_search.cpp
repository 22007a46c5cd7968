#include "engine/byte_search.h"

#include <algorithm>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tallowmere {

namespace {

constexpr int byte_ranks[256] = {
#include "engine/byte_ranks.inc"
};

/// Bytes of a candidate that are compared before the comparison counts as work.
constexpr std::size_t free_bytes = 16;

}  // namespace

BytePattern::BytePattern(std::string_view bytes, const std::array<Byte, 256>* lower)
    : bytes_(bytes), lower_(lower), borders_(bytes.size(), 0) {
  if (bytes_.empty()) return;
  choose_probes();
  std::uint32_t border = 0;
  for (std::size_t i = 1; i < bytes_.size(); ++i) {
    while (border > 0 && bytes_[i] != bytes_[border]) border = borders_[border - 1];
    if (bytes_[i] == bytes_[border]) ++border;
    borders_[i] = border;
  }
}

void BytePattern::choose_probes() {
  std::size_t rarest = 0;
  for (std::size_t i = 1; i < bytes_.size(); ++i) {
    if (rank_at(i) < rank_at(rarest)) rarest = i;
  }
  std::size_t other = rarest == 0 ? bytes_.size() - 1 : 0;
  for (std::size_t i = 0; i < bytes_.size(); ++i) {
    // A second look at the same byte value helps little, so it wins only if far rarer than others.
    const auto cost = [&](std::size_t at) {
      return rank_at(at) + (bytes_[at] == bytes_[rarest] ? 64 : 0);
    };
    if (i != rarest && cost(i) < cost(other)) other = i;
  }
  first_ = probe_at(rarest);
  second_ = probe_at(other);
}

int BytePattern::rank_at(std::size_t offset) const {
  const auto byte = static_cast<Byte>(bytes_[offset]);
  if (!lower_) return byte_ranks[byte];
  int rank = 0;
  for (std::size_t variant = 0; variant < 256; ++variant) {
    if ((*lower_)[variant] == byte) rank = std::max(rank, byte_ranks[variant]);
  }
  return rank;
}

BytePattern::Probe BytePattern::probe_at(std::size_t offset) const {
  const auto byte = static_cast<Byte>(bytes_[offset]);
  Probe probe{offset, 0, byte};
  if (lower_) {
    for (unsigned variant = 0; variant < 256; ++variant) {
      if ((*lower_)[variant] == byte) probe.mask |= static_cast<Byte>(variant ^ byte);
    }
  }
  probe.value |= probe.mask;
  return probe;
}

bool BytePattern::candidate(const Byte* text) const {
  return (text[first_.offset] | first_.mask) == first_.value &&
         (text[second_.offset] | second_.mask) == second_.value;
}

#if defined(__SSE2__)

namespace {

std::uint64_t bits(__m128i equal) {
  return static_cast<unsigned>(_mm_movemask_epi8(equal));
}

/// Both probes of a pattern in registers, for 16 positions at a time. `masked` is false when both
/// masks are zero, which saves an eighth of the time.
template <bool masked>
class BothProbes {
 public:
  BothProbes(std::size_t first_offset, Byte first_mask, Byte first_value, std::size_t second_offset,
             Byte second_mask, Byte second_value)
      : first_offset_(first_offset),
        second_offset_(second_offset),
        first_mask_(spread(first_mask)),
        first_value_(spread(first_value)),
        second_mask_(spread(second_mask)),
        second_value_(spread(second_value)) {}

  __m128i at(const Byte* text) const {
    __m128i first = load(text + first_offset_);
    __m128i second = load(text + second_offset_);
    if constexpr (masked) {
      first = _mm_or_si128(first, first_mask_);
      second = _mm_or_si128(second, second_mask_);
    }
    return _mm_and_si128(_mm_cmpeq_epi8(first, first_value_),
                         _mm_cmpeq_epi8(second, second_value_));
  }

 private:
  static __m128i spread(Byte byte) { return _mm_set1_epi8(static_cast<char>(byte)); }
  static __m128i load(const Byte* text) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
  }

  std::size_t first_offset_;
  std::size_t second_offset_;
  __m128i first_mask_;
  __m128i first_value_;
  __m128i second_mask_;
  __m128i second_value_;
};

}  // namespace

#endif

bool BytePattern::equal_at(const Byte* text, std::uint64_t& work) const {
  const auto* bytes = reinterpret_cast<const Byte*>(bytes_.data());
  const std::size_t length = bytes_.size();
  std::size_t i = 0;
  if (lower_) {
    while (i < length && (*lower_)[text[i]] == bytes[i]) ++i;
    if (i > free_bytes) work += i;
    return i == length;
  }
  const std::size_t head = std::min(length, free_bytes);
  if (std::memcmp(text, bytes, head) != 0) return false;
  if (head == length) return true;
  work += length;
  return std::memcmp(text + head, bytes + head, length - head) == 0;
}

OccurrenceScan::OccurrenceScan(const BytePattern& pattern, const Byte* begin, const Byte* end)
    : pattern_(pattern), block_(begin), at_(begin), last_(begin), end_(end), begin_(begin) {
  const auto size = static_cast<std::size_t>(end - begin);
  const std::size_t length = pattern.length();
  if (length == 0) {
    last_ = end;
  } else if (size >= length) {
    last_ = end - length + 1;
  }
}

bool OccurrenceScan::refill() {
  if (linear_) return refill_linear();
  if (pattern_.length() == 0) return refill_everywhere();
  if (refill_vector()) return true;
  for (; at_ < last_; ++at_) {
    if (!pattern_.candidate(at_)) continue;
    block_ = at_++;
    mask_ = 1;
    return true;
  }
  return false;
}

bool OccurrenceScan::refill_everywhere() {
  const auto count = static_cast<unsigned>(std::min<std::ptrdiff_t>(last_ - at_, 64));
  if (count == 0) return false;
  block_ = at_;
  mask_ = count == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << count) - 1;
  at_ += count;
  return true;
}

#if defined(__SSE2__)

// Leaves fewer than 16 positions to the caller. No load passes the end of the text: the probes
// lie inside the pattern, and the pattern fits at every position below last_.
template <bool masked>
bool OccurrenceScan::refill_masked() {
  const BothProbes<masked> probes(pattern_.first_.offset, pattern_.first_.mask,
                                  pattern_.first_.value, pattern_.second_.offset,
                                  pattern_.second_.mask, pattern_.second_.value);
  const Byte* text = at_;
  for (; last_ - text >= 64; text += 64) {
    const __m128i a = probes.at(text);
    const __m128i b = probes.at(text + 16);
    const __m128i c = probes.at(text + 32);
    const __m128i d = probes.at(text + 48);
    const __m128i any = _mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d));
    if (_mm_movemask_epi8(any) == 0) continue;
    block_ = text;
    mask_ = bits(a) | bits(b) << 16 | bits(c) << 32 | bits(d) << 48;
    at_ = text + 64;
    return true;
  }
  for (; last_ - text >= 16; text += 16) {
    block_ = text;
    mask_ = bits(probes.at(text));
    if (mask_ == 0) continue;
    at_ = text + 16;
    return true;
  }
  at_ = text;
  return false;
}

bool OccurrenceScan::refill_vector() {
  const bool masked = (pattern_.first_.mask | pattern_.second_.mask) != 0;
  return masked ? refill_masked<true>() : refill_masked<false>();
}

#else

bool OccurrenceScan::refill_vector() {
  return false;
}

#endif

// In linear mode every candidate is a whole occurrence already.
bool OccurrenceScan::refill_linear() {
  const auto* bytes = reinterpret_cast<const Byte*>(pattern_.bytes_.data());
  const auto length = static_cast<std::uint32_t>(pattern_.length());
  while (at_ < end_) {
    const Byte byte = pattern_.lower_ ? (*pattern_.lower_)[*at_] : *at_;
    ++at_;
    while (matched_ > 0 && byte != bytes[matched_]) matched_ = pattern_.borders_[matched_ - 1];
    if (byte == bytes[matched_]) ++matched_;
    if (matched_ == length) {
      matched_ = pattern_.borders_[length - 1];
      block_ = at_ - length;
      mask_ = 1;
      return true;
    }
  }
  return false;
}

bool OccurrenceScan::confirmed(const Byte* at) {
  if (linear_) return true;
  const bool equal = pattern_.equal_at(at, work_);
  if (work_ > BytePattern::work_allowed(static_cast<std::size_t>(at - begin_))) {
    linear_ = true;
    mask_ = 0;
    at_ = at + 1;
  }
  return equal;
}

}  // namespace tallowmere
