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

/// Decides from the bytes of a whole file, of one chunk at most, whether it matches, where that is
/// certain without decoding: some needed term does not occur at all, or the phrase does. The
/// matcher decides the rest.
class RawFilter {
 public:
  /// Prepares the patterns. Keeps nothing of `search`; `page`, whose invalid bytes are characters
  /// of `code_page`, must outlive this object.
  RawFilter(const CompiledSearch& search, const SearchPage& page, const CodePage& code_page);
  RawFilter(const RawFilter&) = delete;  // the patterns point to the table
  RawFilter& operator=(const RawFilter&) = delete;

  /// True when a file of any encoding but UTF-16 has the same answer byte by byte: the criteria are
  /// a phrase in ASCII that matches nothing else.
  bool bytes_suffice() const { return bytes_suffice_; }

  /// Returns whether the file of these bytes, mark included, matches; nothing when that is open.
  std::optional<bool> answer(std::string_view file, TextEncoding encoding) const;

  /// Returns the same for a file of any encoding but UTF-16, the code page included. That settles
  /// most files before their encoding is known.
  std::optional<bool> answer_unless_utf16(std::string_view file) const;

 private:
  /// The longest parts of a term that an encoding writes in only one form, apart from ASCII's case,
  /// or, in UTF-8, in forms of the same length.
  struct Parts {
    std::array<BytePattern, 3> of_encoding;
    BytePattern unless_utf16;  ///< UTF-8, of characters that are ASCII or not in the code page
  };

  void merge_forms(const std::string& term, const SearchPage& page);

  template <typename Chosen>
  bool may_match(std::string_view file, const Chosen& chosen) const;
  std::optional<bool> holds_phrase(std::string_view file, bool tells) const;

  /// Maps bytes of UTF-8 by which forms of a character differ to the same, wherever they occur:
  /// this finds too much, which does no harm.
  std::array<Byte, 256> merged_;
  bool one_suffices_;                        ///< otherwise all are needed
  std::optional<BytePattern> phrase_;        ///< in UTF-8, in one of its forms: enough for a match
  bool is_ascii_phrase_ = false;             ///< the phrase means the same in the code page
  bool bytes_suffice_ = false;               ///< and nothing beyond ASCII matches it
  std::vector<std::optional<Parts>> terms_;  ///< those needed; nothing for one that no file holds
};

}  // namespace tallowmere
