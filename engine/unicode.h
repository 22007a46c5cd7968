#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Names and typed text are UTF-8 everywhere above the system's interface. File names may be
// ill-formed on either system: a lone UTF-16 surrogate is kept as its three-byte form ("WTF-8",
// https://simonsapin.github.io/wtf-8/), so that every name converts there and back unchanged.

namespace tallowmere {

/// Returns the code point at `position` and moves `position` past it. A byte that begins no
/// well-formed sequence is taken alone, as 0xDC00 + byte, which no well-formed text holds.
char32_t next_code_point(std::string_view text, std::size_t& position);

void append_utf8(std::string& text, char32_t code_point);

std::u16string to_utf16(std::string_view utf8);
std::string to_utf8(std::u16string_view utf16);

/// True when `text` is well-formed UTF-8 without surrogates.
bool is_well_formed_utf8(std::string_view text);

}  // namespace tallowmere
