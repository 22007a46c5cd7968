#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "engine/byte_search.h"
#include "engine/compiled_search.h"
#include "engine/file_chunks.h"

namespace tallowmere {

enum class MatchOutcome {
  match,
  no_match,
  stopped,  ///< `go_on` said no
  failed    ///< reading broke off
};

/// Decides whether a file matches the criteria. Made once per run and thread; what it owns is
/// scratch, and its buffer serves all files. It reads the file in chunks of 63,000 characters, and
/// what counts as an occurrence at the seam of two chunks is part of the answer: it differs between
/// the search types.
class TextMatcher {
 public:
  /// Matches files in the code page by `search` and the others by `unicode`; when that is null, it
  /// reads all files in the code page. Both must be made from the same criteria and outlive the
  /// matcher; other matchers may share them.
  explicit TextMatcher(const CompiledSearch& search, const UnicodeSearch* unicode = nullptr);
  TextMatcher(const TextMatcher&) = delete;
  TextMatcher& operator=(const TextMatcher&) = delete;

  /// Tests the file that is open in `file`, and closes it in every case. `go_on` is asked before
  /// every chunk after the first, and within a chunk that takes long; `error` is set when the
  /// outcome is `failed`.
  MatchOutcome match_open_file(FileReader& file, const std::function<bool()>& go_on,
                               SystemError& error);

  /// True when that file was searched byte by byte but might have another answer as Unicode text:
  /// it is UTF-16 by its mark, or UTF-8 beyond ASCII and the criteria go beyond ASCII, too.
  bool another_as_unicode() const { return another_as_unicode_; }

 private:
  struct Text {
    const Byte* begin;
    const Byte* end;
  };

  bool begins_as_unicode() const;
  bool match_chunk();
  bool interrupted();
  bool match_all_terms();
  bool match_any_term();
  MultiPattern::Outcome find_any_term();
  bool find_term(std::size_t term) const;
  bool match_term_in_chunk(std::size_t term);
  bool match_term_at_boundary(std::size_t term);
  bool match_phrase_in_chunk();
  bool match_near_in_chunk();
  bool find_term_at_boundary(std::size_t term);
  Text term_boundary(std::size_t carry, std::size_t head) const;
  bool not_whole_word_in_file(const Byte* at, std::size_t length) const;
  bool not_whole_word_in_text(const Text& text, const Byte* at, std::size_t length) const;
  Text load_near_window(const Byte* anchor) const;
  bool near_terms_in_window(const Text& window);
  bool find_term_in_window(const Text& window, std::size_t term);
  bool stands_whole(const Text& window, const Byte* at, const BytePattern& pattern) const;
  bool anchor_passes(const Byte* anchor);

  const CompiledSearch& in_page_;
  const UnicodeSearch* const unicode_;
  const CompiledSearch* search_;  ///< the one for the file's encoding
  FileText text_;
  FileChunks chunks_;
  std::vector<bool> found_;        ///< AND: the terms found in this file so far
  std::size_t carry_ = 0;          ///< bytes before the chunk that belong to its boundary
  std::vector<const Byte*> next_;  ///< NEAR: each term's next occurrence, or null

  const std::function<bool()>* go_on_ = nullptr;  ///< during match_open_file
  int looks_ = 0;                                 ///< terms looked for in this chunk
  bool stopped_ = false;
  bool another_as_unicode_ = false;
};

}  // namespace tallowmere
