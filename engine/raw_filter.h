#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "engine/compiled_search.h"
#include "engine/search_page.h"
#include "engine/text_encoding.h"

namespace tallowmere {

/// Sees in the bytes of a whole file that it cannot match, so that it need not be decoded. It only
/// ever says so where some term that is needed, or each of several of which one is, does not
/// occur in the file at all: what a match is remains the matcher's business.
class RawFilter {
 public:
  /// Keeps nothing of `search`; `page` must outlive this object.
  RawFilter(const CompiledSearch& search, const SearchPage& page);

  /// True when the file of these bytes, mark included, holds no match for certain.
  bool rules_out(std::string_view file, TextEncoding encoding) const;

 private:
  /// A stretch of a term as each encoding has it; nothing when no stretch is sure.
  using Stretch = std::optional<std::array<BytePattern, 3>>;

  bool occurs(const Stretch& stretch, std::string_view file, TextEncoding encoding) const;

  bool one_suffices_;  ///< otherwise all are needed
  std::vector<Stretch> stretches_;
};

}  // namespace tallowmere
