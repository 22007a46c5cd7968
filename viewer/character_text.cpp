#include "viewer/character_text.h"

#include <algorithm>
#include <bit>

#include "engine/text_decoder.h"

namespace tallowmere {

namespace {

/// What is no character becomes this. It never forms a pair: at most another such unit follows it.
constexpr char16_t lone_half = 0xD800;
constexpr TextEncoding native_utf16 =
    std::endian::native == std::endian::little ? TextEncoding::utf16_le : TextEncoding::utf16_be;

bool is_surrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDFFF;
}

}  // namespace

// No character of UTF-8 extends over a byte that begins a sequence, and no pair over the first half
// of another one. So what precedes the longest character that could hold the byte does not matter.
std::size_t character_begin(std::string_view piece, std::size_t at, std::int64_t position,
                            TextEncoding encoding) {
  if (at >= piece.size()) return piece.size();
  const bool units = encoding != TextEncoding::utf8;
  std::size_t begin = at;
  // A unit begins at an odd position.
  if (units && (position + static_cast<std::int64_t>(at)) % 2 == 0) --begin;
  const std::size_t step = units ? 2 : 1;
  const std::size_t most = static_cast<std::size_t>(longest_character) - step;
  for (std::size_t back = step; back <= most && back <= begin; back += step) {
    if (next_character(piece, begin - back, encoding).length > back + (at - begin)) {
      return begin - back;
    }
  }
  return begin;
}

std::string CharacterText::search_bytes(const SearchPage& page) const {
  std::string result(bytes_.size(), '\0');
  const auto* from = reinterpret_cast<const Byte*>(bytes_.data());
  auto* into = reinterpret_cast<Byte*>(result.data());
  DecodeSpan span{from, from + bytes_.size(), into, into + result.size()};
  decode(span, encoding_, page, true);
  result.resize(static_cast<std::size_t>(span.into - into));
  return result;
}

/// Returns the length of the character that begins at a byte. Most need no look at what follows.
std::size_t CharacterText::length_at(std::size_t at) const {
  if (encoding_ == TextEncoding::utf8) {
    if (static_cast<unsigned char>(bytes_[at]) < 0x80) return 1;
  } else if (at + 1 < bytes_.size()) {
    const char high = bytes_[encoding_ == TextEncoding::utf16_le ? at + 1 : at];
    if ((static_cast<unsigned char>(high) & 0xF8) != 0xD8) return 2;
  }
  return next_character(bytes_, at, encoding_).length;
}

std::size_t CharacterText::byte_at(std::int64_t character) const {
  std::size_t at = 0;
  for (; character > 0 && at < bytes_.size(); --character) {
    at += length_at(at);
  }
  return at;
}

std::int64_t CharacterText::begun_before(std::size_t byte) const {
  std::int64_t count = 0;
  for (std::size_t at = 0; at < std::min(byte, bytes_.size()); ++count) {
    at += length_at(at);
  }
  return count;
}

CharacterText unit_characters(std::u16string_view units) {
  return {{reinterpret_cast<const char*>(units.data()), 2 * units.size()}, native_utf16};
}

UnitText to_units(std::string_view bytes, std::size_t begin, TextEncoding encoding,
                  const CodePage& page) {
  UnitText text;
  text.units.reserve(bytes.size());
  text.origin.reserve(bytes.size() + 1);
  const auto put = [&text](char32_t unit, std::size_t origin) {
    text.units.push_back(static_cast<char16_t>(unit));
    text.origin.push_back(static_cast<std::int32_t>(origin));
  };
  for (std::size_t at = begin; at < bytes.size();) {
    const auto [code, length] = next_character(bytes, at, encoding);
    if (code < 0x10000) {
      put(code, at);
    } else if (code < no_character) {
      put(0xD7C0 + (code >> 10), at);
      put(0xDC00 + (code & 0x3FF), at + 2);
    } else {
      const bool stray = code >= code_page_byte;
      put(stray ? page.to_unicode(static_cast<unsigned char>(code - code_page_byte)) : lone_half,
          at);
    }
    at += length;
  }
  text.origin.push_back(static_cast<std::int32_t>(bytes.size()));
  return text;
}

std::u16string without_lone_halves(std::u16string_view units) {
  std::u16string result(units);
  for (std::size_t at = 0; at < units.size(); ++at) {
    const bool in_pair = is_second_of_pair(units, at) || is_second_of_pair(units, at + 1);
    if (is_surrogate(units[at]) && !in_pair) result[at] = u'\uFFFD';
  }
  return result;
}

bool is_second_of_pair(std::u16string_view units, std::size_t at) {
  return at > 0 && at < units.size() && units[at] >= 0xDC00 && units[at] <= 0xDFFF &&
         units[at - 1] >= 0xD800 && units[at - 1] <= 0xDBFF;
}

}  // namespace tallowmere
