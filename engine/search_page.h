#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/byte_search.h"
#include "engine/code_page.h"
#include "engine/search_criteria.h"

namespace tallowmere {

/// A code page made for one search: it gives every character of Unicode a byte, so that a decoded
/// text is searched as one byte per character. ASCII keeps its bytes. Beyond ASCII, each character
/// of the criteria has its own byte, together with all that match it when case is ignored; all
/// others share two bytes, one for letters and one for the rest. It never changes later, so threads
/// share it.
class SearchPage {
 public:
  /// The most different characters beyond ASCII that the criteria can hold.
  static constexpr std::size_t most = 126;

  /// Makes the page; `page` says what invalid bytes of UTF-8 mean. Keeps nothing of either.
  SearchPage(const SearchCriteria& search, const CodePage& page);

  /// False when the criteria hold more different characters than there is room for: this page then
  /// finds none of them.
  bool fits() const { return fits_; }

  /// Returns the byte of a character as next_character yields it.
  Byte byte_of(char32_t code) const { return code < first_pair ? table_[code] : rare(code); }

  /// Converts criteria to the bytes of the page. Half a surrogate pair, or a byte of ill-formed
  /// text, has none, so that no file holds it.
  PageText to_bytes(std::string_view utf8) const;

  /// Returns the character of a byte of the criteria, folded when case is ignored.
  char32_t character(Byte byte) const;
  /// Returns the other characters beyond ASCII that match such a byte; none unless case is ignored.
  std::u32string other_forms(Byte byte) const;

  /// Returns the table that makes capitals small: only those of ASCII, as byte_of folds the rest.
  const std::array<Byte, 256>& lower_table() const { return lower_; }
  /// Returns which bytes are letters, which continue a word.
  const std::array<bool, 256>& word_table() const { return words_; }

 private:
  static constexpr char32_t first_pair = 0x10000;  ///< from here on, in no table

  char32_t folded(char32_t code) const;
  void give_bytes(std::string_view criteria);
  void fill_table();
  void fold_table();
  Byte rare(char32_t code) const;

  bool ignore_case_;
  bool fits_ = true;
  std::vector<std::pair<char32_t, Byte>> own_;  ///< by character
  std::unique_ptr<Byte[]> table_;               ///< of the characters below first_pair
  std::array<Byte, 256> stray_;                 ///< of invalid bytes
  std::array<Byte, 256> lower_;
  std::array<bool, 256> words_{};
  std::vector<std::pair<Byte, char32_t>> other_forms_;
};

}  // namespace tallowmere
