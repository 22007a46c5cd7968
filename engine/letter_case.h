#pragma once

#include <string>
#include <string_view>

// The two ways to ignore case: lower_case orders what the user sees and finds what the user typed;
// name_key decides whether two names belong to one file.

namespace tallowmere {

/// Maps to lower case by Unicode's simple case mapping, the same on every system and in every
/// locale.
char32_t to_lower(char32_t code_point);

/// True for a letter that is the lower case of another by the same mapping.
bool has_upper_case(char32_t code_point);

/// Maps every letter of `text` by to_lower. Two results compare as the lower-cased code points do.
std::string lower_case(std::string_view text);

/// Makes a key that is equal for two names or paths exactly when the system treats them as the
/// same: it compares their UTF-16 units in upper case. Unlike lower_case, the key keeps apart the
/// two small sigmas, and the two cases of a letter that takes two units.
std::string name_key(std::string_view name);

}  // namespace tallowmere
