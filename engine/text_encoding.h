#pragma once

#include <cstddef>
#include <string_view>

namespace tallowmere {

/// How the bytes of a file are read as characters.
enum class TextEncoding : unsigned char { code_page, utf8, utf16_le, utf16_be };

/// How many bytes at the beginning of a file decide its encoding.
inline constexpr std::size_t encoding_sample = 63000;

/// Finds the encoding of a file that begins with these bytes, of which only a sample counts. Its
/// mark decides; without one it is UTF-8 when the sample is valid UTF-8, where its end may cut a
/// sequence; otherwise the code page. ASCII alone is UTF-8.
TextEncoding find_text_encoding(std::string_view begin);

/// Returns how many bytes the mark takes that a file of this encoding begins with; 0 without one.
std::size_t mark_length(TextEncoding encoding, std::string_view begin);

/// One character of a text.
struct TextCharacter {
  char32_t code;       ///< its code point, or one of the values below
  std::size_t length;  ///< bytes that it takes, at least 1
};

/// Half a surrogate pair, or the odd byte at the end of a UTF-16 text: a character that matches
/// nothing.
inline constexpr char32_t no_character = 0x110000;

/// A byte that begins no well-formed UTF-8 sequence is taken alone, as this plus its value; it is
/// read as the code page's character.
inline constexpr char32_t code_page_byte = 0x110100;

/// Returns the character at `at`, which must be inside `text`, in an encoding other than the code
/// page. A sequence that the end of `text` cuts is ill-formed: `text` must hold the whole of it, or
/// the end of the file.
TextCharacter next_character(std::string_view text, std::size_t at, TextEncoding encoding);

}  // namespace tallowmere
