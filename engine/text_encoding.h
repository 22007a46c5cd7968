#pragma once

#include <cstddef>
#include <string_view>

namespace tallowmere {

/// How the bytes of a file are to be read as characters.
enum class TextEncoding : unsigned char { code_page, utf8, utf16_le, utf16_be };

/// The bytes at the beginning of a file that its encoding is decided by.
inline constexpr std::size_t encoding_sample = 63000;

/// The encoding of a file that begins with these bytes, of which no more than a sample counts: by
/// its mark; without one UTF-8 when nothing there is invalid as that, a sequence cut by the end
/// included; otherwise the code page. ASCII alone is UTF-8.
TextEncoding find_text_encoding(std::string_view begin);

/// How many bytes the mark takes that a file of this encoding begins with; 0 without one.
std::size_t mark_length(TextEncoding encoding, std::string_view begin);

/// One character of a text.
struct TextCharacter {
  char32_t code;       ///< what it is; or one of those below
  std::size_t length;  ///< bytes that it takes, at least 1
};

/// Half a surrogate pair, or the odd byte at the end of a UTF-16 text: a character that matches
/// nothing.
inline constexpr char32_t no_character = 0x110000;

/// A byte that begins no well-formed UTF-8 sequence is taken alone, as this and its value: it
/// stands for the code page's character.
inline constexpr char32_t code_page_byte = 0x110100;

/// The character at `at`, which is inside `text`, in an encoding other than the code page. What a
/// sequence lacks because `text` ends is lacking: more of the file has to be in it, or its end.
TextCharacter next_character(std::string_view text, std::size_t at, TextEncoding encoding);

}  // namespace tallowmere
