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
  /// Keeps nothing of `search`; `page`, which is for files in `code_page`, must outlive this
  /// object.
  RawFilter(const CompiledSearch& search, const SearchPage& page, const CodePage& code_page);

  /// True when the file of these bytes, mark included, holds no match for certain.
  bool rules_out(std::string_view file, TextEncoding encoding) const;

  /// The same for a file of any encoding but UTF-16, the code page included, by terms in ASCII.
  /// Most files are done with then, without a look at what else they hold.
  bool rules_out_unless_utf16(std::string_view file) const;

 private:
  /// What is looked for instead of a term: a part of it, as each encoding has it.
  struct Stretch {
    std::array<BytePattern, 3> patterns;
    bool same_in_page;  ///< the first one goes for files in the code page, too
  };

  template <typename MayOccur>
  bool may_match(const MayOccur& may_occur) const;

  bool one_suffices_;                              ///< otherwise all are needed
  std::vector<std::optional<Stretch>> stretches_;  ///< nothing for a term without a sure one
};

}  // namespace tallowmere
