#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Names and typed text are UTF-8 everywhere above the system's interface. File names may be
// ill-formed on either system: a lone UTF-16 surrogate is kept as its three-byte form ("WTF-8",
// https://simonsapin.github.io/wtf-8/), so that every name converts there and back unchanged.

namespace tallowmere {

/// Takes the code point at `position` and moves `position` behind it. A byte that begins no
/// well-formed sequence is taken alone, as 0xDC00 + byte, which no well-formed text holds.
char32_t next_code_point(std::string_view text, std::size_t& position);

void append_utf8(std::string& text, char32_t code_point);

std::u16string to_utf16(std::string_view utf8);
std::string to_utf8(std::u16string_view utf16);

/// True when `text` is well-formed UTF-8 without surrogates.
bool is_well_formed_utf8(std::string_view text);

/// Lower case by Unicode's simple case mapping, the same on every system and in every locale.
char32_t to_lower(char32_t code_point);

/// True for a letter that is the lower case of another by the same mapping.
bool has_upper_case(char32_t code_point);

/// Below, at or above 0 as `a` stands before, equals or stands after `b`, by lower-cased code
/// points.
int compare_ignore_case(std::string_view a, std::string_view b);

/// Equal for two names or paths exactly when the system takes them for the same: it compares their
/// UTF-16 units in upper case. Unlike compare_ignore_case, which orders names for the user, it
/// keeps the two small sigmas apart, and the cases of what takes two units.
std::string name_key(std::string_view name);

}  // namespace tallowmere
