#include "engine/file_types.h"

#include "engine/letter_case.h"
#include "engine/unicode.h"

namespace tallowmere {

namespace {

bool fits_extension(std::string_view extension, std::string_view pattern) {
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < extension.size() && j < pattern.size()) {
    const char32_t c = next_code_point(extension, i);
    const char32_t wanted = next_code_point(pattern, j);
    const bool fits = wanted == U'?' ? c != U'.' : to_lower(c) == to_lower(wanted);
    if (!fits) return false;
  }
  return i == extension.size() && j == pattern.size();
}

}  // namespace

bool fits_file_type(std::string_view name, std::string_view pattern) {
  if (pattern == "*") return true;
  if (pattern.empty()) return false;
  // A pattern may hold dots, as in tar.gz, so the extension may begin after any dot of the name.
  for (std::size_t dot = name.find('.'); dot != std::string_view::npos;
       dot = name.find('.', dot + 1)) {
    if (fits_extension(name.substr(dot + 1), pattern)) return true;
  }
  return false;
}

}  // namespace tallowmere
