#pragma once

#include <string>
#include <string_view>

namespace tallowmere::driver {

/// UTF-8 to and from the system's UTF-16.
std::wstring to_wide(std::string_view text);
std::string from_wide(std::wstring_view text);

}  // namespace tallowmere::driver
