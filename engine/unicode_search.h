#pragma once

#include "engine/compiled_search.h"
#include "engine/raw_filter.h"
#include "engine/search_page.h"

namespace tallowmere {

/// What a search computes from the criteria for files in UTF-8 and UTF-16. Made once per run;
/// threads share it.
struct UnicodeSearch {
  /// Compiles the search. Keeps nothing of its arguments.
  UnicodeSearch(const SearchCriteria& search, const CodePage& code_page)
      : page(search, code_page), compiled(search, page), filter(compiled, page, code_page) {}
  UnicodeSearch(const UnicodeSearch&) = delete;
  UnicodeSearch& operator=(const UnicodeSearch&) = delete;

  const SearchPage page;
  const CompiledSearch compiled;
  const RawFilter filter;
};

}  // namespace tallowmere
