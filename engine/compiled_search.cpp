#include "engine/compiled_search.h"

#include <algorithm>
#include <string_view>

#include "engine/utf8_check.h"
#include "engine/word_bytes.h"

namespace tallowmere {

namespace {

/// Takes a term in double quotes, which runs to its closing quote, across spaces: `end` becomes
/// that quote's position, `start` what follows the opening one. A quote that is never closed is an
/// ordinary character.
bool take_quoted_term(std::string_view text, std::size_t& start, std::size_t& end) {
  if (text[start] != '"') return false;
  const std::size_t closing = text.find('"', start + 1);
  if (closing == std::string_view::npos) return false;
  ++start;
  end = closing;
  return true;
}

}  // namespace

CompiledSearch::CompiledSearch(const SearchCriteria& search, const CodePage& page)
    : CompiledSearch(search,
                     Page{[&page](std::string_view utf8) { return to_page_text(utf8, page); },
                          page.lower_table(), word_bytes}) {}

CompiledSearch::CompiledSearch(const SearchCriteria& search, const SearchPage& page)
    : CompiledSearch(search, Page{[&page](std::string_view utf8) { return page.to_bytes(utf8); },
                                  page.lower_table(), page.word_table()}) {}

CompiledSearch::CompiledSearch(const SearchCriteria& search, const Page& page)
    : search_type(search.search_type),
      ignore_case(!search.match_case),
      prox_before(search.prox_before),
      prox_all(search.prox_all),
      everything(search.criteria.empty()),
      beyond_ascii(ascii_length(search.criteria) < search.criteria.size()),
      word(page.words) {
  if (search_type == search_phrase) {
    add_term(search.criteria, false, page);
  } else {
    split(search.criteria, page);
    last_term = static_cast<int>(terms.size()) - 1;
  }
  if (!terms.empty()) {
    max_term_len = *std::max_element(term_len.begin(), term_len.end());
    window_len = term_len[0] + prox_before + search.prox_after;
  }
  compile(ignore_case ? &page.lower : nullptr);
  if (search_type == search_or) prepare_passes();
}

// Positions count from 0; `end` is one past the term. The text does not end with a space.
void CompiledSearch::split(const std::string& criteria, const Page& page) {
  const std::string_view text = criteria;
  std::size_t start = text.find_first_not_of(' ');
  while (start < text.size()) {
    std::size_t end = std::min(text.find(' ', start), text.size());
    const bool last = end == text.size();
    const bool quoted = take_quoted_term(text, start, end);
    add_term(text.substr(start, end - start), !quoted, page);
    if (last) return;
    // When no space follows a closing quote, the next term starts right after it.
    start = text.find_first_not_of(' ', end + 1);
  }
}

void CompiledSearch::add_term(std::string_view text, bool whole, const Page& page) {
  PageText term = page.to_bytes(text);
  if (ignore_case) {
    for (char& c : term.bytes) c = static_cast<char>(page.lower[static_cast<Byte>(c)]);
  }
  whole_word.push_back(whole);
  representable.push_back(term.representable);
  term_len.push_back(static_cast<int>(term.bytes.size()));
  terms.push_back(std::move(term.bytes));
}

void CompiledSearch::compile(const std::array<Byte, 256>* lower) {
  for (const std::string& term : terms) patterns.emplace_back(term, lower);
  for (std::size_t byte = 0; byte < 256; ++byte) {
    word_in_text[byte] = word[lower ? (*lower)[byte] : byte];
  }
}

void CompiledSearch::prepare_passes() {
  for (std::size_t term = 0; term < patterns.size(); ++term) {
    // An empty term occurs everywhere and is soon found.
    if (patterns[term].length() == 0) return;
    if (representable[term]) passes_terms.push_back(term);
  }
  if (!MultiPattern::usable() || passes_terms.size() < MultiPattern::fewest) return;
  for (std::size_t first = 0; first < passes_terms.size(); first += MultiPattern::most) {
    const std::size_t behind = std::min(first + MultiPattern::most, passes_terms.size());
    std::vector<const BytePattern*> group;
    for (std::size_t i = first; i < behind; ++i) group.push_back(&patterns[passes_terms[i]]);
    passes.emplace_back(group);
  }
}

}  // namespace tallowmere
