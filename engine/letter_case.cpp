#include "engine/letter_case.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>

#include "engine/unicode.h"

namespace tallowmere {

namespace {

struct CaseRange {
  char32_t first;
  char32_t last;
  char32_t step;
  std::int32_t delta;
};

constexpr CaseRange case_ranges[] = {
#include "engine/case_ranges.inc"
};

constexpr char32_t first_pair = 0x10000;  ///< from here on a code point takes two UTF-16 units
constexpr char32_t sharp_s = 0xDF;        ///< its capital exists, but the system leaves it as it is

using UpperCase = std::pair<char32_t, char32_t>;  ///< a letter and what it becomes

consteval std::size_t upper_case_count() {
  std::size_t count = 0;
  for (const CaseRange& range : case_ranges) count += (range.last - range.first) / range.step + 1;
  return count;
}

/// The case ranges by lower-case letter. Where several letters share a lower case, as K and the
/// kelvin sign do, it becomes the first of them.
consteval auto sorted_upper_cases() {
  std::array<UpperCase, upper_case_count()> cases;
  std::size_t i = 0;
  for (const CaseRange& range : case_ranges) {
    for (char32_t upper = range.first; upper <= range.last; upper += range.step) {
      cases[i++] = {upper + static_cast<char32_t>(range.delta), upper};
    }
  }
  std::ranges::sort(cases);
  return cases;
}

constexpr auto upper_cases = sorted_upper_cases();

/// Returns the capital of a small letter; any other letter as it is.
char32_t capital_of(char32_t letter) {
  if (letter < 0x80) return letter >= 'a' && letter <= 'z' ? letter - ('a' - 'A') : letter;
  if (letter == sharp_s) return letter;
  const auto* found = std::ranges::lower_bound(upper_cases, letter, {}, &UpperCase::first);
  return found != upper_cases.end() && found->first == letter ? found->second : letter;
}

/// Folds a text. `fold` must map ASCII to ASCII: the ASCII at the beginning, mostly the whole text,
/// is folded in place.
template <typename Fold>
std::string folded(std::string_view text, const Fold& fold) {
  std::string result(text);
  std::size_t position = 0;
  for (; position < text.size(); ++position) {
    const auto unit = static_cast<unsigned char>(text[position]);
    if (unit >= 0x80) break;
    result[position] = static_cast<char>(fold(char32_t{unit}));
  }
  result.resize(position);
  while (position < text.size()) {
    append_utf8(result, fold(next_code_point(text, position)));
  }
  return result;
}

}  // namespace

char32_t to_lower(char32_t code_point) {
  if (code_point < 0x80) {
    return code_point >= 'A' && code_point <= 'Z' ? code_point + ('a' - 'A') : code_point;
  }
  const auto* range =
      std::lower_bound(std::begin(case_ranges), std::end(case_ranges), code_point,
                       [](const CaseRange& entry, char32_t value) { return entry.last < value; });
  if (range == std::end(case_ranges) || code_point < range->first) return code_point;
  if ((code_point - range->first) % range->step != 0) return code_point;
  return code_point + static_cast<char32_t>(range->delta);
}

bool has_upper_case(char32_t code_point) {
  return capital_of(code_point) != code_point;
}

std::string lower_case(std::string_view text) {
  return folded(text, to_lower);
}

std::string name_key(std::string_view name) {
  return folded(name, [](char32_t c) { return c < first_pair ? capital_of(c) : c; });
}

}  // namespace tallowmere
