#pragma once

#include <string>
#include <string_view>

// The two ways to take capitals and small letters for the same: what is shown to the user in an
// order, or found by what the user typed, goes by lower_case; whether two names are one file's, by
// name_key.

namespace tallowmere {

/// Lower case by Unicode's simple case mapping, the same on every system and in every locale.
char32_t to_lower(char32_t code_point);

/// True for a letter that is the lower case of another by the same mapping.
bool has_upper_case(char32_t code_point);

/// Every letter of `text` by to_lower. Two results compare as the lower-cased code points do.
std::string lower_case(std::string_view text);

/// Equal for two names or paths exactly when the system takes them for the same: it compares their
/// UTF-16 units in upper case. Unlike lower_case, it keeps the two small sigmas apart, and the
/// cases of what takes two units.
std::string name_key(std::string_view name);

}  // namespace tallowmere
