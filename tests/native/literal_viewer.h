#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/search_criteria.h"
#include "viewer/display_filter.h"

namespace tallowmere {

/// What the text box shows of a chunk. `position`, 1-based in the chunk, moves along.
std::string literal_filter(std::string chunk, const std::string& extension,
                           std::int64_t chunk_start, std::int64_t& position);

/// The viewer and its steps from hit to hit as one would write them down without a thought for
/// speed: one-based positions, whole strings, every chunk and every window cut from the file.
class LiteralViewer {
 public:
  LiteralViewer(const std::string& file, const std::string& extension, const SearchCriteria& search,
                const CodePage& page)
      : file_(file), extension_(extension), search_(search), page_(page) {}

  void find_next() { find(true); }
  void find_prev() { find(chunk_pending); }
  void load_text_chunk(std::int64_t start, std::int64_t position);

  std::string text1;
  std::int64_t sel_start = 0;
  std::int64_t sel_length = 0;
  std::int64_t chunk_start = 1;
  std::int64_t file_location = 1;
  bool last_chunk = true;
  bool chunk_pending = true;
  int beeps = 0;
  int misses = 0;

 private:
  using Position = std::int64_t;

  void find(bool forward);
  Position new_start(bool forward) const;
  void get_file_chunk(Position& position);
  void fill_textbox(Position& position);
  void get_highlight_position(Position& position, Position& length) const;
  void get_prev_highlight(Position& position, Position& length) const;
  Position get_hit(const std::string& text, Position start, std::size_t term) const;
  Position get_prev_hit(Position start, std::size_t term) const;
  bool is_whole(const std::string& text, Position at, std::size_t term) const;
  bool passes_proximity(Position position) const;
  std::string proximity_window(Position position) const;
  /// The terms, or the phrase alone.
  std::vector<std::string> terms() const;
  Position max_term_len() const;
  std::string seen(std::string text) const;

  const std::string& file_;
  const std::string extension_;
  const SearchCriteria& search_;
  const CodePage& page_;
  std::string chunk_text_;
};

}  // namespace tallowmere
