#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/compiled_search.h"
#include "engine/search_page.h"

namespace tallowmere {

/// An occurrence of the criteria in a text; positions count from 1, 0 means none.
struct Hit {
  std::int64_t position = 0;
  std::int64_t length = 0;
  bool operator==(const Hit&) const = default;
};

/// A text in which hits are looked for, one byte for each character, and its place in the file: the
/// windows of NEAR reach beyond the text.
struct HitText {
  std::string_view text;
  std::int64_t file_location = 0;  ///< of the text's last byte, counted from 1
  std::int64_t file_length = 0;
  /// Reads `length` bytes of the file from a 1-based position; fewer at its end, none when it
  /// cannot be read.
  std::function<std::string(std::int64_t position, std::int64_t length)> read_window{};
  /// Replaces read_window in a Unicode file: reads `count` characters that begin `before`
  /// characters before the one at `position` of the text, or with the file.
  std::function<std::string(std::int64_t position, std::int64_t before, std::int64_t count)>
      read_around{};
};

/// The hits of a stretch of a text.
struct HitRange {
  std::vector<Hit> hits;
  std::int64_t next = 0;  ///< where to go on; after the stretch when it has been searched
};

/// Finds the hits that the viewer highlights in one chunk. Made for one set of criteria; serves any
/// number of texts. With SearchCriteria::unicode_text it has a second finder, for the texts of
/// Unicode files.
class HitFinder {
 public:
  /// Prepares the finder. Keeps nothing of `search`; `page` must outlive the finder.
  HitFinder(const SearchCriteria& search, const CodePage& page);

  /// Returns the finder for texts in the bytes of its search_page(); null without one.
  const HitFinder* unicode() const { return unicode_.get(); }
  /// Returns the page of a finder for the texts of Unicode files; null for others.
  const SearchPage* search_page() const { return search_page_.get(); }

  /// True without criteria: nothing is ever a hit.
  bool empty() const { return search_.everything; }

  /// Returns how many characters, less one, consecutive chunks share so that no hit is lost at
  /// their seam: the length of the longest term that fits into a chunk, at least 1.
  std::int64_t max_term_len() const { return max_term_len_; }
  /// Returns how many characters around a hit decide whether it is one: the window of NEAR.
  std::int64_t reach() const { return search_.search_type == search_near ? search_.window_len : 0; }

  /// Finds the first hit that begins at or after `position`. Of terms at one place the later wins.
  Hit get_highlight_position(const HitText& in, std::int64_t position) const;

  /// Finds the last hit that begins at or before `position`. Of terms at one place the earlier
  /// wins.
  Hit get_prev_highlight(const HitText& in, std::int64_t position) const;

  /// Finds the hits that begin at or after `position` and before `end`, as get_highlight_position()
  /// finds them one after another. Ends early after `most` occurrences, whether hits or not.
  HitRange hits_between(const HitText& in, std::int64_t position, std::int64_t end, int most) const;

  /// True when `selection` only repeats the criteria: the phrase, or one of the terms.
  bool repeats_criteria(std::string_view selection) const;
  /// The same for a selection in a Unicode file.
  bool repeats_criteria(std::u16string_view selection) const;

 private:
  static constexpr std::int64_t no_end = std::numeric_limits<std::int64_t>::max();

  HitFinder(const SearchCriteria& search, std::unique_ptr<const SearchPage> page);
  void find_max_term_len();
  bool not_whole_word(std::string_view text, const Byte* at, std::size_t length) const;
  bool can_stand(std::size_t term) const;
  std::int64_t get_hit(std::string_view text, std::int64_t start, std::size_t term,
                       std::int64_t end = no_end) const;
  std::int64_t get_prev_hit(std::string_view text, std::int64_t start, std::size_t term) const;
  Hit next_near_hit(const HitText& in, std::int64_t position) const;
  Hit prev_near_hit(const HitText& in, std::int64_t position) const;

  bool near_hit_passes(const HitText& in, std::int64_t position) const;
  std::string_view get_view_proximity_str(const HitText& in, std::int64_t position,
                                          std::string& buffer) const;
  std::string read_proximity_str(const HitText& in, std::int64_t position) const;
  bool proximity_view_search(std::string_view prox_window) const;

  std::unique_ptr<const SearchPage> search_page_;
  CompiledSearch search_;
  std::unique_ptr<const HitFinder> unicode_;
  std::int64_t max_term_len_ = 1;
};

}  // namespace tallowmere
