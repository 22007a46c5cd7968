#pragma once

#include <string>
#include <string_view>

namespace tallowmere::driver {

/// Converts UTF-8 to the system's UTF-16; from_wide() converts back.
std::wstring to_wide(std::string_view text);
std::string from_wide(std::wstring_view text);

}  // namespace tallowmere::driver
