#include "shell/window_title.h"

#include <string>

#include "engine/unicode.h"

namespace tallowmere {
namespace {

std::u32string lower_case(std::string_view text) {
  std::u32string lower;
  for (std::size_t position = 0; position < text.size();) {
    lower += to_lower(next_code_point(text, position));
  }
  return lower;
}

}  // namespace

TitleMatch match_title(std::string_view title, std::string_view wanted) {
  const std::u32string have = lower_case(title);
  const std::u32string want = lower_case(wanted);
  if (have == want) return TitleMatch::exact;
  if (have.starts_with(want)) return TitleMatch::begins_with;
  return have.ends_with(want) ? TitleMatch::ends_with : TitleMatch::none;
}

}  // namespace tallowmere
