#pragma once

#include <string>
#include <string_view>

namespace tallowmere {

/// True when a file's name fits an extension pattern, ignoring case: "txt" fits every name that
/// ends in ".txt", "w??" those whose extension is a w and two characters that are not dots, "*"
/// every name, with or without a dot. An empty pattern fits none.
bool fits_file_type(std::string_view name, std::string_view pattern);

}  // namespace tallowmere
