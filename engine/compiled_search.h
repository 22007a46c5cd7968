#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/byte_search.h"
#include "engine/code_page.h"
#include "engine/multi_search.h"
#include "engine/search_criteria.h"
#include "engine/search_page.h"

namespace tallowmere {

/// What a search computes from the criteria before it looks at the first file: terms, patterns,
/// tables. It never changes later, so matchers on several threads can share one.
struct CompiledSearch {
  /// Compiles for files in the code page. Keeps nothing of `search`; `page` must outlive this
  /// object.
  CompiledSearch(const SearchCriteria& search, const CodePage& page);
  /// Compiles for texts that have been decoded into the bytes of `page`, whose fits() must be true.
  CompiledSearch(const SearchCriteria& search, const SearchPage& page);
  // The passes point to the patterns, which stay where they are when a vector is moved.
  CompiledSearch(CompiledSearch&&) = default;
  CompiledSearch(const CompiledSearch&) = delete;
  CompiledSearch& operator=(const CompiledSearch&) = delete;

  int search_type;
  bool ignore_case;
  int prox_before;
  bool prox_all;
  bool everything;    ///< there are no criteria
  bool beyond_ascii;  ///< the criteria hold characters beyond ASCII

  // Each array has one entry per term. A phrase is one entry, too, but not a term. Lengths are in
  // characters, which are bytes of the page.
  std::vector<std::string> terms;  ///< lower-cased when `ignore_case`
  std::vector<int> term_len;
  std::vector<bool> whole_word;     ///< false: also matches inside a word
  std::vector<bool> representable;  ///< false: the page lacks a character of it
  int last_term = -1;               ///< -1 for a phrase
  int max_term_len = 0;             ///< 0 matches every file
  int window_len = 0;

  std::vector<BytePattern> patterns;      ///< one per term, in the same order
  std::vector<MultiPattern> passes;       ///< OR with many terms: each pass finds several of them
  std::vector<std::size_t> passes_terms;  ///< the terms of the passes, MultiPattern::most to a pass

  std::array<bool, 256> word;          ///< bytes that continue a word
  std::array<bool, 256> word_in_text;  ///< the same after lower-casing when case is ignored

 private:
  /// What characters are to this search.
  struct Page {
    std::function<PageText(std::string_view)> to_bytes;
    const std::array<Byte, 256>& lower;
    const std::array<bool, 256>& words;
  };

  CompiledSearch(const SearchCriteria& search, const Page& page);
  void split(const std::string& criteria, const Page& page);
  void add_term(std::string_view text, bool whole, const Page& page);
  void compile(const std::array<Byte, 256>* lower);
  void prepare_passes();
};

}  // namespace tallowmere
