#pragma once

#include <string_view>

namespace tallowmere {

inline constexpr std::string_view search_hints_title = "Searching Hints";

/// How to write search criteria, in short.
std::string_view search_hints();

}  // namespace tallowmere
