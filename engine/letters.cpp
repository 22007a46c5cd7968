#include "engine/letters.h"

#include <algorithm>

namespace tallowmere {

namespace {

#include "engine/letters.inc"

/// Returns the range that encloses the character; null when none does.
template <typename Range, std::size_t count>
const Range* range_of(const Range (&ranges)[count], char32_t code) {
  const Range* range = std::ranges::lower_bound(ranges, code, {}, &Range::last);
  return range != std::end(ranges) && range->first <= code ? range : nullptr;
}

}  // namespace

bool is_letter(char32_t code) {
  return range_of(letters, code) != nullptr;
}

char32_t fold(char32_t code) {
  const FoldRange* range = range_of(folds, code);
  if (!range || (code - range->first) % range->step != 0) return code;
  return code + static_cast<char32_t>(range->delta);
}

std::span<const LetterRange> letter_ranges() {
  return letters;
}

std::span<const FoldRange> fold_ranges() {
  return folds;
}

}  // namespace tallowmere
