#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tallowmere {

using Byte = unsigned char;

/// A byte string prepared to be searched for, exactly or ignoring case.
///
/// Candidates are positions at which two chosen bytes of the pattern agree with the text. The
/// two are the pattern's rarest by a table of byte frequencies, so that few candidates have to be
/// compared in full (the idea of "packed pair" searching, see the Rust crate memchr by Andrew
/// Gallant). When case is ignored, a byte and its variants are compared under a mask that removes
/// the bits in which they differ: this finds a superset of the true matches, and the text need not
/// be folded first.
class BytePattern {
 public:
  /// Finds `bytes` as they are when `lower` is null. Otherwise they must be lower-cased already,
  /// and text matches when `lower` (256 entries, kept by the caller) maps it to them.
  BytePattern(std::string_view bytes, const std::array<Byte, 256>* lower);

  std::size_t length() const { return bytes_.size(); }

  /// True when `byte` of a text matches the byte at `offset` of the pattern.
  bool byte_fits(std::size_t offset, Byte byte) const {
    return static_cast<Byte>(bytes_[offset]) == (lower_ ? (*lower_)[byte] : byte);
  }

  /// Returns how common the byte at `offset` is in files, 0 to 255.
  int rank_at(std::size_t offset) const;

  /// True when the pattern occurs at `text`, where length() bytes must follow. Adds to `work` what
  /// the comparison cost beyond the first few bytes.
  bool equal_at(const Byte* text, std::uint64_t& work) const;

  /// Returns the work that comparing may cost in a text of this size before it is given up.
  static std::uint64_t work_allowed(std::size_t text_size) { return 8 * (text_size + 4096); }

 private:
  friend class OccurrenceScan;

  struct Probe {
    std::size_t offset = 0;
    Byte mask = 0;   ///< bits in which the variants of the byte differ
    Byte value = 0;  ///< the byte with those bits set
  };

  void choose_probes();
  Probe probe_at(std::size_t offset) const;
  bool candidate(const Byte* text) const;

  std::string bytes_;
  const std::array<Byte, 256>* lower_;
  Probe first_;
  Probe second_;
  std::vector<std::uint32_t> borders_;  ///< failure function of Knuth, Morris and Pratt
};

/// Walks over the occurrences of a pattern in a text from left to right, overlapping ones
/// included. Takes time linear in the text, whatever text and pattern hold: when comparing
/// candidates has cost too much, it goes on with the algorithm of Knuth, Morris and Pratt.
class OccurrenceScan {
 public:
  /// The pattern and the text [begin, end) must outlive the scan. An empty pattern occurs before
  /// every byte of the text.
  OccurrenceScan(const BytePattern& pattern, const Byte* begin, const Byte* end);

  /// Returns the next occurrence for which `accept` (cheap, asked before the full comparison) is
  /// true; null when there is none.
  template <typename Accept>
  const Byte* next(Accept&& accept) {
    while (const Byte* at = next_candidate()) {
      if (accept(at) && confirmed(at)) return at;
    }
    return nullptr;
  }

  const Byte* next() {
    return next([](const Byte*) { return true; });
  }

 private:
  const Byte* next_candidate() {
    if (mask_ == 0 && !refill()) return nullptr;
    const Byte* at = block_ + __builtin_ctzll(mask_);
    mask_ &= mask_ - 1;
    return at;
  }

  bool refill();
  bool refill_everywhere();
  bool refill_vector();
  template <bool masked>
  bool refill_masked();
  bool refill_linear();
  bool confirmed(const Byte* at);

  const BytePattern& pattern_;
  const Byte* block_;       ///< the position of bit 0 of mask_
  std::uint64_t mask_ = 0;  ///< candidates not handed out yet
  const Byte* at_;          ///< the first position not looked at yet
  const Byte* last_;        ///< one past the last position at which the pattern fits
  const Byte* end_;
  std::uint64_t work_ = 0;  ///< what equal_at has cost so far
  const Byte* begin_;
  bool linear_ = false;
  std::uint32_t matched_ = 0;  ///< linear mode: bytes of the pattern that end at at_
};

}  // namespace tallowmere
