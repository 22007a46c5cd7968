#include "engine/name_patterns.h"

#include <algorithm>

#include "engine/letter_case.h"
#include "engine/unicode.h"

namespace tallowmere {

namespace {

std::u32string lower_characters(std::string_view text) {
  std::u32string characters;
  characters.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    characters += to_lower(next_code_point(text, at));
  }
  return characters;
}

/// True when the name fits. Where a character does not fit, the last * takes one more: an earlier
/// one never has to, since what follows it was found as far left as possible.
bool fits(std::u32string_view name, std::u32string_view pattern) {
  constexpr std::size_t none = std::u32string_view::npos;
  std::size_t after_star = none;  ///< of the pattern
  std::size_t star_end = 0;       ///< of what the * takes of the name
  std::size_t wanted = 0;
  for (std::size_t at = 0; at < name.size();) {
    if (wanted < pattern.size() && pattern[wanted] == U'*') {
      after_star = ++wanted;
      star_end = at;
    } else if (wanted < pattern.size() &&
               (pattern[wanted] == U'?' || pattern[wanted] == name[at])) {
      ++wanted;
      ++at;
    } else if (after_star != none) {
      wanted = after_star;
      at = ++star_end;
    } else {
      return false;
    }
  }
  return wanted == pattern.size() || pattern.substr(wanted) == U"*";
}

}  // namespace

NamePatterns::NamePatterns(std::string_view typed) {
  for (std::size_t start = 0; start < typed.size();) {
    const std::size_t end = std::min(typed.find(';', start), typed.size());
    add(typed.substr(start, end - start));
    start = end + 1;
  }
}

void NamePatterns::add(std::string_view typed) {
  constexpr std::string_view blanks = " \t";
  const std::size_t first = typed.find_first_not_of(blanks);
  if (first == std::string_view::npos) return;
  Pattern pattern;
  for (const char32_t character :
       lower_characters(typed.substr(first, typed.find_last_not_of(blanks) + 1 - first))) {
    if (character != U'*') {
      ++pattern.least_size;
    } else if (pattern.text.ends_with(U'*')) {
      continue;
    }
    pattern.text += character;
  }
  patterns_.push_back(std::move(pattern));
}

bool NamePatterns::fit(std::string_view name) const {
  if (empty()) return false;
  const std::u32string characters = lower_characters(name);
  return std::ranges::any_of(patterns_, [&](const Pattern& pattern) {
    return characters.size() >= pattern.least_size && fits(characters, pattern.text);
  });
}

}  // namespace tallowmere
