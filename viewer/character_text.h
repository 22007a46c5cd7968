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

/// The beginning of the character that holds the byte at `at` of a piece of a file. `position` is
/// that of the piece's first byte, counted from 1. The piece must go on for a character, less a
/// byte, on both sides of `at`, as far as the file does.
std::size_t character_begin(std::string_view piece, std::size_t at, std::int64_t position,
                            TextEncoding encoding);

/// A text that begins with a whole character, seen as its characters. Counts from 0. Keeps no copy.
class CharacterText {
 public:
  CharacterText(std::string_view bytes, TextEncoding encoding)
      : bytes_(bytes), encoding_(encoding) {}

  /// One byte for each character, as a search sees them.
  std::string search_bytes(const SearchPage& page) const;
  std::size_t size() const { return bytes_.size(); }
  /// The text from the byte on with which a character begins.
  CharacterText from(std::size_t byte) const { return {bytes_.substr(byte), encoding_}; }
  /// The byte with which a character begins, fitted into the text.
  std::size_t byte_at(std::int64_t character) const;
  /// How many characters begin before a byte.
  std::int64_t begun_before(std::size_t byte) const;

 private:
  std::size_t length_at(std::size_t at) const;

  std::string_view bytes_;
  TextEncoding encoding_;
};

/// A text in UTF-16, to be seen as its characters.
CharacterText unit_characters(std::u16string_view units);

/// A text with the byte that every unit came from, and where it ends. Of a pair the second one came
/// from the character's third byte, so that no two places are the same.
struct UnitText {
  std::u16string units;
  std::vector<std::int32_t> origin;
};

/// The characters of `bytes` from `begin` on as UTF-16. What is no character is half a pair alone.
UnitText to_units(std::string_view bytes, std::size_t begin, TextEncoding encoding,
                  const CodePage& page);

/// The units as others can take them: the replacement character for half a pair alone.
std::u16string without_lone_halves(std::u16string_view units);

bool is_second_of_pair(std::u16string_view units, std::size_t at);

}  // namespace tallowmere
