#pragma once

#include <string_view>

namespace tallowmere {

/// False for characters below 32 and for * / : < > \ |, which no file type may hold.
bool is_valid_type_char(char32_t character);

/// True when every character is valid, also for the empty string.
bool is_valid_file_type(std::string_view file_type);

}  // namespace tallowmere
