#include "engine/unicode.h"

namespace tallowmere {

namespace {

constexpr char32_t stray_byte = 0xDC00;

bool is_continuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

bool is_surrogate(char32_t code_point) {
  return code_point >= 0xD800 && code_point <= 0xDFFF;
}

/// Returns how many bytes the sequence has that `lead` begins; 0 when it begins none.
std::size_t sequence_length(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

}  // namespace

char32_t next_code_point(std::string_view text, std::size_t& position) {
  const auto lead = static_cast<unsigned char>(text[position]);
  const std::size_t length = sequence_length(lead);
  const std::size_t start = position++;
  if (length == 1) return lead;
  if (length == 0 || start + length > text.size()) return stray_byte + lead;
  char32_t code_point = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[start + i]);
    if (!is_continuation(byte)) return stray_byte + lead;
    code_point = code_point << 6 | (byte & 0x3Fu);
  }
  const bool overlong =
      (length == 3 && code_point < 0x800) || (length == 4 && code_point < 0x10000);
  if (overlong || code_point > 0x10FFFF) return stray_byte + lead;
  position = start + length;
  return code_point;
}

void append_utf8(std::string& text, char32_t code_point) {
  const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (code_point < 0x80) {
    put(code_point);
  } else if (code_point < 0x800) {
    put(0xC0 | code_point >> 6);
    put(0x80 | (code_point & 0x3F));
  } else if (code_point < 0x10000) {
    put(0xE0 | code_point >> 12);
    put(0x80 | (code_point >> 6 & 0x3F));
    put(0x80 | (code_point & 0x3F));
  } else {
    put(0xF0 | code_point >> 18);
    put(0x80 | (code_point >> 12 & 0x3F));
    put(0x80 | (code_point >> 6 & 0x3F));
    put(0x80 | (code_point & 0x3F));
  }
}

std::u16string to_utf16(std::string_view utf8) {
  std::u16string result;
  result.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    const char32_t code_point = next_code_point(utf8, position);
    if (code_point < 0x10000) {
      result.push_back(static_cast<char16_t>(code_point));
    } else {
      result.push_back(static_cast<char16_t>(0xD7C0 + (code_point >> 10)));
      result.push_back(static_cast<char16_t>(0xDC00 + (code_point & 0x3FF)));
    }
  }
  return result;
}

std::string to_utf8(std::u16string_view utf16) {
  std::string result;
  result.reserve(utf16.size());
  for (std::size_t i = 0; i < utf16.size(); ++i) {
    char32_t code_point = utf16[i];
    const bool is_pair = code_point >= 0xD800 && code_point <= 0xDBFF && i + 1 < utf16.size() &&
                         utf16[i + 1] >= 0xDC00 && utf16[i + 1] <= 0xDFFF;
    if (is_pair) code_point = 0x10000 + ((code_point & 0x3FF) << 10) + (utf16[++i] & 0x3FF);
    append_utf8(result, code_point);
  }
  return result;
}

bool is_well_formed_utf8(std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    if (is_surrogate(next_code_point(text, position))) return false;
  }
  return true;
}

}  // namespace tallowmere
