#include "engine/text_decoder.h"

#include <algorithm>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tallowmere {

namespace {

constexpr std::size_t longest_character = 4;  ///< bytes
constexpr std::ptrdiff_t block = 16;

bool is_continuation(Byte byte) {
  return (byte & 0xC0) == 0x80;
}

/// Decodes one character, for those that need a closer look or are near the end.
bool decode_one(DecodeSpan& span, TextEncoding encoding, const SearchPage& page, bool last) {
  const auto left = static_cast<std::size_t>(span.from_end - span.from);
  const std::string_view text(reinterpret_cast<const char*>(span.from),
                              std::min(left, longest_character));
  const TextCharacter character = next_character(text, 0, encoding);
  // What looks wrong may be cut; ASCII is whole.
  const bool may_be_cut = encoding == TextEncoding::utf8
                              ? character.code >= code_page_byte && *span.from >= 0xC0
                              : left < 2 || character.code == no_character;
  if (left < longest_character && !last && may_be_cut) return false;
  *span.into++ = page.byte_of(character.code);
  span.from += character.length;
  return true;
}

#if defined(__SSE2__)

__m128i load(const Byte* from) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

void store(Byte* into, __m128i bytes) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(into), bytes);
}

/// Copies ASCII; may write further bytes after it, within the room.
bool copy_ascii(DecodeSpan& span) {
  while (span.from_end - span.from >= block && span.into_end - span.into >= block) {
    const __m128i text = load(span.from);
    store(span.into, text);
    const auto others = static_cast<unsigned>(_mm_movemask_epi8(text));
    const int count = others == 0 ? block : __builtin_ctz(others);
    span.from += count;
    span.into += count;
    if (others != 0) return true;
  }
  return false;
}

#else

bool copy_ascii(DecodeSpan& span) {
  while (span.from < span.from_end && span.into < span.into_end && *span.from < 0x80) {
    *span.into++ = *span.from++;
  }
  return span.from_end - span.from >= block && span.into_end - span.into >= block;
}

#endif

/// Decodes well-formed text while a whole block of text and room is left, up to a byte that needs a
/// closer look.
void decode_utf8_blocks(DecodeSpan& span, const SearchPage& page) {
  while (copy_ascii(span)) {
    const Byte* from = span.from;
    Byte* into = span.into;
    const Byte* const from_stop = span.from_end - longest_character;
    // What follows is beyond ASCII; the loop also takes a space or two between words.
    int ascii = 0;
    for (; from <= from_stop && into < span.into_end && ascii < 4; ++into) {
      const Byte lead = from[0];
      if (lead < 0x80) {
        *into = lead;
        from += 1;
        ++ascii;
        continue;
      }
      ascii = 0;
      if (lead >= 0xC2 && lead <= 0xDF && is_continuation(from[1])) {
        *into = page.byte_of((lead & 0x1Fu) << 6 | (from[1] & 0x3Fu));
        from += 2;
        continue;
      }
      if ((lead & 0xF0) != 0xE0 || !is_continuation(from[1]) || !is_continuation(from[2])) break;
      const char32_t code = (lead & 0x0Fu) << 12 | (from[1] & 0x3Fu) << 6 | (from[2] & 0x3Fu);
      if (code < 0x800 || (code & 0xF800) == 0xD800) break;
      *into = page.byte_of(code);
      from += 3;
    }
    const bool moved = from != span.from;
    span.from = from;
    span.into = into;
    if (!moved) return;
  }
}

/// Decodes UTF-16 by eight units at a time, as long as none of them is half of a pair.
template <bool little_endian>
void decode_utf16_blocks(DecodeSpan& span, const SearchPage& page) {
#if defined(__SSE2__)
  const __m128i ascii = _mm_set1_epi16(0x7F);
  const __m128i halves = _mm_set1_epi16(static_cast<short>(0xF800));
  const __m128i half = _mm_set1_epi16(static_cast<short>(0xD800));
  while (span.from_end - span.from >= block && span.into_end - span.into >= block / 2) {
    __m128i units = load(span.from);
    if (!little_endian) units = _mm_or_si128(_mm_slli_epi16(units, 8), _mm_srli_epi16(units, 8));
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(_mm_and_si128(units, halves), half)) != 0) return;
    const __m128i beyond = _mm_andnot_si128(ascii, units);
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(beyond, _mm_setzero_si128())) == 0xFFFF) {
      _mm_storel_epi64(reinterpret_cast<__m128i*>(span.into), _mm_packus_epi16(units, units));
    } else {
      alignas(16) char16_t codes[8];
      _mm_store_si128(reinterpret_cast<__m128i*>(codes), units);
      for (int i = 0; i < 8; ++i) span.into[i] = page.byte_of(codes[i]);
    }
    span.from += block;
    span.into += block / 2;
  }
#endif
}

}  // namespace

void decode(DecodeSpan& span, TextEncoding encoding, const SearchPage& page, bool last) {
  while (span.from < span.from_end && span.into < span.into_end) {
    if (encoding == TextEncoding::utf8) {
      decode_utf8_blocks(span, page);
    } else if (encoding == TextEncoding::utf16_le) {
      decode_utf16_blocks<true>(span, page);
    } else {
      decode_utf16_blocks<false>(span, page);
    }
    const bool more = span.from < span.from_end && span.into < span.into_end;
    if (more && !decode_one(span, encoding, page, last)) return;
  }
}

}  // namespace tallowmere
