#include "engine/search_criteria.h"

#include <algorithm>
#include <string_view>

#include "engine/unicode.h"

namespace tallowmere {

namespace {

/// Cuts criteria into terms. Positions count from 0 here; `stop` is one past the last character.
class TermSplitter {
 public:
  TermSplitter(SearchCriteria& search, const CodePage& page)
      : search_(search), page_(page), text_(search.criteria) {}

  void split() {
    std::size_t start = text_.find_first_not_of(' ');
    while (true) {
      std::size_t end = text_.find(' ', start);
      if (end == std::string_view::npos) break;
      add_term(start, end);
      // After a closing quote with no blank behind it the next term starts right there.
      start = std::min(text_.find_first_not_of(' ', end + 1), text_.size());
    }
    std::size_t stop = text_.size();
    if (start < stop) add_term(start, stop);
    search_.last_term = static_cast<int>(search_.terms.size()) - 1;
  }

 private:
  /// A term in double quotes runs to its closing quote, across spaces. A quote that is never
  /// closed is an ordinary character.
  bool take_quoted_term(std::size_t& start, std::size_t& end) const {
    if (text_[start] != '"') return false;
    const std::size_t closing = text_.find('"', start + 1);
    if (closing == std::string_view::npos) return false;
    ++start;
    end = closing;
    return true;
  }

  void add_term(std::size_t& start, std::size_t& end) {
    const bool quoted = take_quoted_term(start, end);
    PageText term = to_page_text(text_.substr(start, end - start), page_);
    if (search_.ignore_case) {
      for (char& c : term.bytes) {
        c = static_cast<char>(page_.lower(static_cast<unsigned char>(c)));
      }
    }
    search_.whole_word.push_back(!quoted);
    search_.representable.push_back(term.representable);
    search_.term_len.push_back(static_cast<int>(term.bytes.size()));
    search_.terms.push_back(std::move(term.bytes));
  }

  SearchCriteria& search_;
  const CodePage& page_;
  std::string_view text_;
};

void clear_terms(SearchCriteria& search) {
  search.terms.clear();
  search.term_len.clear();
  search.whole_word.clear();
  search.representable.clear();
  search.last_term = -1;
  search.max_term_len = 0;
  search.window_len = 0;
  search.phrase = {};
}

}  // namespace

void load_search_criteria(SearchCriteria& search, const CriteriaInput& input,
                          const CodePage& page) {
  search.match_case = input.match_case;
  search.ignore_case = !input.match_case;
  search.prox_before = input.prox_before;
  search.prox_after = input.prox_after;
  search.prox_all = input.prox_all;
  search.search_type = input.search_type;
  search.criteria = input.criteria;
  clear_terms(search);

  if (search.search_type == search_phrase) {
    search.phrase = to_page_text(search.criteria, page);
    search.max_term_len = static_cast<int>(search.phrase.bytes.size());
    return;
  }
  // Only trailing blanks go: leading ones stay in the text and are passed over by the split.
  search.criteria.resize(search.criteria.find_last_not_of(' ') + 1);
  if (search.criteria.empty()) return;

  TermSplitter(search, page).split();
  search.max_term_len = *std::max_element(search.term_len.begin(), search.term_len.end());
  search.window_len = search.term_len[0] + search.prox_before + search.prox_after;
}

}  // namespace tallowmere
