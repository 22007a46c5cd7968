#pragma once

#include <cstdint>

#include "viewer/file_viewer.h"
#include "viewer/viewer_host.h"

namespace tallowmere {

/// One step of scrolling: replaces the chunk by another one in which a line of the text looks as
/// before, and restores the selection. Painting waits from the first load until this object is
/// destroyed.
class ChunkShift {
 public:
  /// Begins a step; `caret_first`: the caret is at the selection's start.
  ChunkShift(FileViewer& viewer, TextFace& face, bool caret_first = false);
  ~ChunkShift();
  ChunkShift(const ChunkShift&) = delete;
  ChunkShift& operator=(const ChunkShift&) = delete;

  /// The displayed lines of the chunk that look as if the whole file were shown. Those at a seam do
  /// not: they are cut, wrap differently, or miss line breaks.
  struct Extent {
    int first = 0;
    int end = 0;  ///< one past the last of them
    bool from_start = false;
    bool to_end = false;  ///< nothing follows in the file
  };
  Extent whole_lines() const;

  /// Loads a chunk that goes on further down (load_above: further up). `line`, where the view is to
  /// begin, becomes the line of the same text in that chunk. False: there is no such chunk, or
  /// lost().
  bool load_below(int& line);
  bool load_above(int& line);
  /// Loads a chunk in which the view can begin at this file position, and finds the nearest line.
  bool load_around(std::int64_t position, int& line);
  bool load_start();
  bool load_end();

  /// True when loading failed, or the file has changed and shows from its beginning: the step ends.
  bool lost() const { return lost_; }

  /// Returns the line whose beginning is nearest to a file position inside the chunk.
  int nearest_line(std::int64_t position) const;
  std::int64_t line_position(int line) const { return position_at(face_.line_index(line)); }
  /// Counts the bytes of the file that a view beginning at this line shows.
  std::int64_t bytes_on_view(int line) const;

  /// Ends the step: restores the selection when another chunk was loaded, and scrolls.
  void finish(int top);

 private:
  const Chunk& chunk() const { return viewer_.shown_chunk(); }
  std::int64_t position_at(int character) const;
  int character_at(std::int64_t position) const;
  int line_at(std::int64_t position) const { return face_.line_from_char(character_at(position)); }
  bool load(std::int64_t start, std::int64_t position, int& line);
  bool load_chunk(std::int64_t start, std::int64_t position);
  std::int64_t room_above(int line) const;
  int lines_above() const;
  int start_line_above(int line) const;
  std::int64_t start_above(std::int64_t position, std::int64_t room, int breaks,
                           std::int64_t before);
  void restore_selection(int top);

  FileViewer& viewer_;
  TextFace& face_;
  FileViewer::Step step_;
  bool lost_ = false;
  bool loaded_ = false;
  bool caret_first_;
  std::int64_t selection_start_;  ///< file positions
  std::int64_t selection_end_;
};

}  // namespace tallowmere
