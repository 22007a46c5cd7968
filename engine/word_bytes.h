#pragma once

#include <array>
#include <cstddef>

namespace tallowmere {

/// True for the bytes that continue a word: ASCII letters and 192 to 255, which are the accented
/// letters of Latin-1. Digits and underscores are boundaries.
constexpr bool is_word_byte(std::size_t byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || byte >= 192;
}

/// is_word_byte as a table.
inline constexpr auto word_bytes = [] {
  std::array<bool, 256> table{};
  for (std::size_t byte = 0; byte < 256; ++byte) table[byte] = is_word_byte(byte);
  return table;
}();

}  // namespace tallowmere
