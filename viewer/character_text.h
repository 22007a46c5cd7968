#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/code_page.h"
#include "engine/search_page.h"
#include "engine/text_encoding.h"

namespace tallowmere {

inline constexpr std::int64_t longest_character = 4;  ///< bytes in any encoding of Unicode

/// Finds the beginning of the character that holds the byte at `at` of a piece of a file.
/// `position` is that of the piece's first byte, counted from 1. The piece must hold
/// `longest_character` - 1 bytes on both sides of `at`, as far as the file goes.
std::size_t character_begin(std::string_view piece, std::size_t at, std::int64_t position,
                            TextEncoding encoding);

/// The characters of a text that begins with a whole one. Counts from 0. Keeps no copy of the text.
class CharacterText {
 public:
  CharacterText(std::string_view bytes, TextEncoding encoding)
      : bytes_(bytes), encoding_(encoding) {}

  /// Returns one byte for each character, as a search sees them.
  std::string search_bytes(const SearchPage& page) const;
  std::size_t size() const { return bytes_.size(); }
  /// Returns the text from `byte` on, with which a character must begin.
  CharacterText from(std::size_t byte) const { return {bytes_.substr(byte), encoding_}; }
  /// Returns the byte with which a character begins, limited to the text.
  std::size_t byte_at(std::int64_t character) const;
  /// Counts the characters that begin before a byte.
  std::int64_t begun_before(std::size_t byte) const;

 private:
  std::size_t length_at(std::size_t at) const;

  std::string_view bytes_;
  TextEncoding encoding_;
};

/// Makes the characters of a text in UTF-16; keeps no copy.
CharacterText unit_characters(std::u16string_view units);

/// A text with the byte that each unit came from, and the byte at which it ends. The second unit of
/// a pair came from the character's third byte, so that no two places are the same.
struct UnitText {
  std::u16string units;
  std::vector<std::int32_t> origin;
};

/// Converts `bytes` from `begin` on to UTF-16. What is no character becomes half a pair alone.
UnitText to_units(std::string_view bytes, std::size_t begin, TextEncoding encoding,
                  const CodePage& page);

/// Replaces each half of a pair that is alone by the replacement character, for other programs.
std::u16string without_lone_halves(std::u16string_view units);

bool is_second_of_pair(std::u16string_view units, std::size_t at);

}  // namespace tallowmere
