#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tallowmere {

/// Patterns of whole names, ignoring case: * fits any characters or none, ? one character. They
/// never change later, so threads can share them.
class NamePatterns {
 public:
  /// Reads patterns separated by ";" from `typed`, which is UTF-8. Spaces and tabs around a pattern
  /// do not belong to it; empty ones are dropped.
  explicit NamePatterns(std::string_view typed);

  bool empty() const { return patterns_.empty(); }

  /// True when a name fits one of the patterns. For each pattern it takes no more steps than the
  /// product of both lengths, whatever they hold.
  bool fit(std::string_view name) const;

 private:
  struct Pattern {
    std::u32string text;         ///< in lower case, without a * after another
    std::size_t least_size = 0;  ///< of a name that fits, in characters
  };

  void add(std::string_view typed);

  std::vector<Pattern> patterns_;
};

}  // namespace tallowmere
