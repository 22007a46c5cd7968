#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/compiled_search.h"
#include "engine/search_page.h"
#include "engine/text_encoding.h"

namespace tallowmere {

/// Tells from the bytes of a whole file, of one chunk at most, whether it matches, where that is
/// sure without decoding: some term that is needed does not occur at all, or the phrase does. The
/// rest is the matcher's business.
class RawFilter {
 public:
  /// Keeps nothing of `search`; `page`, whose invalid bytes stand for `code_page`, must outlive
  /// this object.
  RawFilter(const CompiledSearch& search, const SearchPage& page, const CodePage& code_page);
  RawFilter(const RawFilter&) = delete;  // the patterns point to the table
  RawFilter& operator=(const RawFilter&) = delete;

  /// True when a file of any encoding but UTF-16 has the same answer byte by byte: ASCII matches
  /// nothing else, and a phrase is found wherever it stands.
  bool bytes_suffice() const { return bytes_suffice_; }

  /// Whether the file of these bytes, mark included, matches; nothing when that is open.
  std::optional<bool> answer(std::string_view file, TextEncoding encoding) const;

  /// The same for a file of any encoding but UTF-16, the code page included. Most files are done
  /// with then, without a look at what else they hold.
  std::optional<bool> answer_unless_utf16(std::string_view file) const;

 private:
  /// The longest parts of a term that each encoding has in one form, apart from ASCII's case, or in
  /// UTF-8 in forms of one length.
  struct Parts {
    std::array<BytePattern, 3> of_encoding;
    BytePattern unless_utf16;  ///< also no byte of the code page is a character of it
  };

  void merge_forms(const std::string& term, const SearchPage& page);

  template <typename Chosen>
  bool may_match(std::string_view file, const Chosen& chosen) const;
  std::optional<bool> holds_phrase(std::string_view file, bool tells) const;

  /// Bytes of UTF-8 by which forms of a character differ are taken for the same, wherever they
  /// stand: finds too much, which does no harm.
  std::array<Byte, 256> merged_;
  bool one_suffices_;                        ///< otherwise all are needed
  std::optional<BytePattern> phrase_;        ///< in UTF-8, in one of its forms: enough for a match
  bool is_ascii_phrase_ = false;             ///< it means the same in the code page
  bool bytes_suffice_ = false;               ///< and nothing beyond ASCII matches it
  std::vector<std::optional<Parts>> terms_;  ///< those needed; nothing for one that no file holds
};

}  // namespace tallowmere
