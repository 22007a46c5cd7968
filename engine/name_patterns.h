#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tallowmere {

/// Patterns of whole names, without regard to case: * fits any characters or none, ? one character.
/// Nothing changes in them later, so threads can share them.
class NamePatterns {
 public:
  /// `typed` is UTF-8 and separates patterns by ";". Blanks around one do not belong to it; what is
  /// empty then is none.
  explicit NamePatterns(std::string_view typed);

  bool empty() const { return patterns_.empty(); }

  /// True when a name fits one of the patterns. Takes no more steps than the product of the lengths
  /// of both, whatever they hold.
  bool fit(std::string_view name) const;

 private:
  struct Pattern {
    std::u32string text;         ///< in lower case, without a * behind another
    std::size_t least_size = 0;  ///< of a name that fits, in characters
  };

  void add(std::string_view typed);

  std::vector<Pattern> patterns_;
};

}  // namespace tallowmere
