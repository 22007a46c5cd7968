#pragma once

#include <string>

#include "engine/search_criteria.h"

namespace tallowmere {

/// The matcher as one would write it down without a thought for speed: strings, one-based
/// positions, every neighbour and every window taken from the file. The fast one is held
/// against it.
class LiteralMatcher {
 public:
  LiteralMatcher(const SearchCriteria& search, const CodePage& page);

  bool matches(const std::string& file);

 private:
  bool match_and();
  bool match_or();
  bool match_phrase();
  bool match_near();
  bool match_term_in_chunk(int term);
  std::size_t find_term(std::size_t from, int term) const;
  std::size_t find_term_in(const std::string& text, std::size_t from, int term,
                           const std::string& around) const;
  std::size_t find(const std::string& text, const std::string& part, std::size_t from) const;
  bool not_whole_word_in_file(std::size_t at, std::size_t length) const;
  static bool not_whole_word_in(const std::string& text, std::size_t at, std::size_t length);
  std::string near_window(long long at) const;
  bool near_terms_in(const std::string& window) const;
  std::string lower(std::string text) const;
  std::string seen(const std::string& text) const;

  const SearchCriteria& search_;
  const CodePage& page_;
  std::string file_;
  std::string chunk_;
  std::size_t number_ = 0;         ///< of the chunk, from 0
  std::size_t next_position_ = 0;  ///< 1-based, behind the chunk
  std::string carry_;
  std::vector<bool> found_;
};

}  // namespace tallowmere
