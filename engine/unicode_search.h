#pragma once

#include "engine/compiled_search.h"
#include "engine/raw_filter.h"
#include "engine/search_page.h"

namespace tallowmere {

/// What a search works out of the criteria for files whose characters are Unicode's. Made once per
/// run; threads share it.
struct UnicodeSearch {
  /// As SearchPage and CompiledSearch.
  UnicodeSearch(const SearchCriteria& search, const CodePage& code_page)
      : page(search, code_page), compiled(search, page), filter(compiled, page, code_page) {}
  UnicodeSearch(const UnicodeSearch&) = delete;
  UnicodeSearch& operator=(const UnicodeSearch&) = delete;

  const SearchPage page;
  const CompiledSearch compiled;
  const RawFilter filter;
};

}  // namespace tallowmere
