#include "engine/utf8_check.h"

#include "engine/unicode.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#define TALLOWMERE_SSSE3 1
#endif

namespace tallowmere {

namespace {

bool is_surrogate(char32_t code) {
  return code >= 0xD800 && code <= 0xDFFF;
}

#if defined(TALLOWMERE_SSSE3)

constexpr std::size_t block = 16;

__m128i load(const char* from) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

// What can be wrong with two neighbouring bytes, a bit each (the tables of "Validating UTF-8 In
// Less Than One Instruction Per Byte" by John Keiser and Daniel Lemire). The bytes have a fault
// when the first byte's halves and the second byte's upper half all have its bit.
enum : char {
  too_short = 1 << 0,                   // a lead without continuation
  too_long = 1 << 1,                    // a continuation after ASCII
  overlong_3 = 1 << 2,                  // E0 80..9F
  surrogate = 1 << 4,                   // ED A0..BF
  overlong_2 = 1 << 5,                  // C0, C1
  too_large = 1 << 3,                   // F4 90 and above
  too_large_4 = 1 << 6,                 // F5 and above; also F0 80..8F, which is overlong
  two_more = static_cast<char>(1 << 7)  // two continuations: right only in a longer sequence
};
constexpr char carry = too_short | too_long | two_more;

/// Returns the faults of 16 bytes, given the 16 before them.
__attribute__((target("ssse3"), always_inline)) inline __m128i faults(__m128i text,
                                                                      __m128i before) {
  const __m128i half = _mm_set1_epi8(15);
  const __m128i first_high =
      _mm_setr_epi8(too_long, too_long, too_long, too_long, too_long, too_long, too_long, too_long,
                    two_more, two_more, two_more, two_more, too_short | overlong_2, too_short,
                    too_short | overlong_3 | surrogate, too_short | too_large | too_large_4);
  constexpr char high = carry | too_large | too_large_4;
  const __m128i first_low =
      _mm_setr_epi8(carry | overlong_3 | overlong_2 | too_large_4, carry | overlong_2, carry, carry,
                    carry | too_large, high, high, high, high, high, high, high, high,
                    high | surrogate, high, high);
  constexpr char low_80 = too_long | overlong_2 | two_more | overlong_3 | too_large_4;
  constexpr char low_90 = too_long | overlong_2 | two_more | overlong_3 | too_large;
  constexpr char low_a0 = too_long | overlong_2 | two_more | surrogate | too_large;
  const __m128i second_high = _mm_setr_epi8(too_short, too_short, too_short, too_short, too_short,
                                            too_short, too_short, too_short, low_80, low_90, low_a0,
                                            low_a0, too_short, too_short, too_short, too_short);

  const __m128i previous = _mm_alignr_epi8(text, before, 15);
  const auto upper = [&](__m128i bytes) { return _mm_and_si128(_mm_srli_epi16(bytes, 4), half); };
  const __m128i special =
      _mm_and_si128(_mm_and_si128(_mm_shuffle_epi8(first_high, upper(previous)),
                                  _mm_shuffle_epi8(first_low, _mm_and_si128(previous, half))),
                    _mm_shuffle_epi8(second_high, upper(text)));
  // The third byte of three and the third and fourth of four must follow a continuation.
  const __m128i third =
      _mm_subs_epu8(_mm_alignr_epi8(text, before, 14), _mm_set1_epi8(0xE0 - 0x80));
  const __m128i fourth =
      _mm_subs_epu8(_mm_alignr_epi8(text, before, 13), _mm_set1_epi8(0xF0 - 0x80));
  const __m128i must = _mm_and_si128(_mm_or_si128(third, fourth), _mm_set1_epi8(two_more));
  return _mm_xor_si128(must, special);
}

/// Returns a place before which nothing is wrong, but which may cut a character; it is short of the
/// first fault by a few bytes.
__attribute__((target("ssse3"))) std::size_t skip_blocks(std::string_view text) {
  __m128i before = _mm_setzero_si128();
  std::size_t at = 0;
  for (; text.size() - at >= 2 * block; at += 2 * block) {
    const __m128i front = load(text.data() + at);
    const __m128i back = load(text.data() + at + block);
    const __m128i wrong = _mm_or_si128(faults(front, before), faults(back, front));
    if (_mm_movemask_epi8(_mm_cmpeq_epi8(wrong, _mm_setzero_si128())) != 0xFFFF) break;
    before = back;
  }
  return at;
}

std::size_t surely_valid(std::string_view text) {
  if (!__builtin_cpu_supports("ssse3")) return 0;
  const std::size_t end = skip_blocks(text);
  // Step back to the beginning of a character that may be cut.
  for (std::size_t back = 1; back <= 3 && back <= end; ++back) {
    const auto byte = static_cast<unsigned char>(text[end - back]);
    if (byte >= 0xC0) return end - back;
    if (byte < 0x80) break;
  }
  return end;
}

#if !defined(_WIN32)
/// Returns a place before which all is ASCII. Every search asks this of nearly every byte: wide
/// registers are worth their few lines. Not on Windows: the compiler does not keep the stack
/// aligned for them there.
__attribute__((target("avx2"))) std::size_t skip_ascii_wide(std::string_view text) {
  const auto* from = reinterpret_cast<const __m256i*>(text.data());
  std::size_t at = 0;
  for (; text.size() - at >= 128; at += 128, from += 4) {
    const __m256i front = _mm256_or_si256(_mm256_loadu_si256(from), _mm256_loadu_si256(from + 1));
    const __m256i back =
        _mm256_or_si256(_mm256_loadu_si256(from + 2), _mm256_loadu_si256(from + 3));
    if (_mm256_movemask_epi8(_mm256_or_si256(front, back)) != 0) break;
  }
  return at;
}
#endif

/// Returns a place before which all is ASCII, by the widest registers that the machine has.
std::size_t skip_ascii_blocks(std::string_view text) {
#if !defined(_WIN32)
  if (__builtin_cpu_supports("avx2")) return skip_ascii_wide(text);
#endif
  std::size_t at = 0;
  for (; text.size() - at >= 2 * block; at += 2 * block) {
    const char* from = text.data() + at;
    if (_mm_movemask_epi8(_mm_or_si128(load(from), load(from + block))) != 0) break;
  }
  return at;
}

#else

std::size_t surely_valid(std::string_view) {
  return 0;
}

std::size_t skip_ascii_blocks(std::string_view) {
  return 0;
}

#endif

}  // namespace

std::size_t ascii_length(std::string_view text) {
  std::size_t at = skip_ascii_blocks(text);
  while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80) ++at;
  return at;
}

std::size_t utf8_length(std::string_view text) {
  std::size_t at = surely_valid(text);
  while (at < text.size()) {
    const std::size_t start = at;
    if (is_surrogate(next_code_point(text, at))) return start;
  }
  return at;
}

}  // namespace tallowmere
