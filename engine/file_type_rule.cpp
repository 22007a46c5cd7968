#include "engine/file_type_rule.h"

#include "engine/unicode.h"

namespace tallowmere {

bool is_valid_type_char(char32_t character) {
  return character >= 32 &&
         std::u32string_view(U"*/:<>\\|").find(character) == std::u32string_view::npos;
}

bool is_valid_file_type(std::string_view file_type) {
  for (std::size_t position = 0; position < file_type.size();) {
    if (!is_valid_type_char(next_code_point(file_type, position))) return false;
  }
  return true;
}

}  // namespace tallowmere
