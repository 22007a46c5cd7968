#include "engine/text_encoding.h"

#include <algorithm>
#include <string>

#include "engine/unicode.h"
#include "engine/utf8_check.h"

namespace tallowmere {

namespace {

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";
constexpr std::string_view utf16_le_mark = "\xFF\xFE";
constexpr std::string_view utf16_be_mark = "\xFE\xFF";

bool is_surrogate(char32_t code) {
  return code >= 0xD800 && code <= 0xDFFF;
}

/// Returns the length of the sequence that this byte begins; 1 for one that begins none.
std::size_t sequence_length(unsigned char first) {
  return first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
}

/// True when `text` is the beginning of a well-formed sequence, cut short.
bool is_cut(std::string_view text) {
  std::string whole(text);
  const std::size_t length = sequence_length(static_cast<unsigned char>(text[0]));
  if (text.size() >= length) return false;
  // What is well-formed so far is completed by the lowest or by the highest continuation.
  for (const char continuation : {'\x80', '\xBF'}) {
    std::size_t at = 0;
    whole.resize(text.size());
    whole.append(length - text.size(), continuation);
    const char32_t code = next_code_point(whole, at);
    if (at == length && !is_surrogate(code)) return true;
  }
  return false;
}

bool is_utf8(std::string_view text) {
  const std::size_t valid = utf8_length(text);
  return valid == text.size() || is_cut(text.substr(valid));
}

TextCharacter next_utf8(std::string_view text, std::size_t at) {
  const auto byte = static_cast<unsigned char>(text[at]);
  const std::size_t start = at;
  const char32_t code = next_code_point(text, at);
  if (is_surrogate(code)) return {code_page_byte + byte, 1};
  return {code, at - start};
}

TextCharacter next_utf16(std::string_view text, std::size_t at, bool little_endian) {
  const auto unit = [&](std::size_t from) {
    const auto first = static_cast<unsigned char>(text[from]);
    const auto second = static_cast<unsigned char>(text[from + 1]);
    return static_cast<char32_t>(little_endian ? first | second << 8 : first << 8 | second);
  };
  if (text.size() - at < 2) return {no_character, 1};
  const char32_t high = unit(at);
  if (high < 0xD800 || high > 0xDFFF) return {high, 2};
  if (high > 0xDBFF || text.size() - at < 4) return {no_character, 2};
  const char32_t low = unit(at + 2);
  if (low < 0xDC00 || low > 0xDFFF) return {no_character, 2};
  return {0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00), 4};
}

}  // namespace

TextEncoding find_text_encoding(std::string_view begin) {
  begin = begin.substr(0, encoding_sample);
  if (begin.starts_with(utf8_mark)) return TextEncoding::utf8;
  if (begin.starts_with(utf16_le_mark)) return TextEncoding::utf16_le;
  if (begin.starts_with(utf16_be_mark)) return TextEncoding::utf16_be;
  return is_utf8(begin) ? TextEncoding::utf8 : TextEncoding::code_page;
}

std::size_t mark_length(TextEncoding encoding, std::string_view begin) {
  switch (encoding) {
    case TextEncoding::utf8:
      return begin.starts_with(utf8_mark) ? utf8_mark.size() : 0;
    case TextEncoding::utf16_le:
    case TextEncoding::utf16_be:
      return std::min<std::size_t>(begin.size(), utf16_le_mark.size());
    case TextEncoding::code_page:
      break;
  }
  return 0;
}

TextCharacter next_character(std::string_view text, std::size_t at, TextEncoding encoding) {
  if (encoding == TextEncoding::utf8) return next_utf8(text, at);
  return next_utf16(text, at, encoding == TextEncoding::utf16_le);
}

}  // namespace tallowmere
