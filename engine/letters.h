#pragma once

#include <cstdint>
#include <span>

// Letters and case in files whose characters are Unicode's: the same on every system and in every
// locale.

namespace tallowmere {

/// True for letters of any script and the marks that go with them: Unicode's categories L and M.
bool is_letter(char32_t code);

/// Folds by Unicode's simple case folding, one character to one: equal for two that differ in case
/// only. Some fold to ASCII, as the kelvin sign does. A letter folds to a letter.
char32_t fold(char32_t code);

/// Neighbouring letters.
struct LetterRange {
  char32_t first;
  char32_t last;
};
std::span<const LetterRange> letter_ranges();

/// Characters at equal steps, with what to add to fold them.
struct FoldRange {
  char32_t first;
  char32_t last;
  char32_t step;
  std::int32_t delta;
};
std::span<const FoldRange> fold_ranges();

}  // namespace tallowmere
