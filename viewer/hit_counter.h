#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/code_page.h"
#include "viewer/chunk.h"
#include "viewer/chunk_source.h"
#include "viewer/hit_finder.h"

namespace tallowmere {

/// Counts the hits of one file: the places at which Find Next stops on its way from the file's
/// beginning to its end. A place that it meets in two chunks counts once. The caller makes the
/// small steps when it has time, and reads the file for it.
class HitCounter {
 public:
  /// Bytes of the longest file whose hits are counted.
  static constexpr std::int64_t longest_file = 64 << 20;
  /// False for a longer file, and for hits so long that too many chunks would have to be walked
  /// over.
  static bool can_count(const HitFinder& finder, std::int64_t file_length);

  /// Prepares a count. `finder` and `page` must outlive the counter; `extension` is that of the
  /// file's name.
  HitCounter(const HitFinder& finder, const CodePage& page, TextEncoding encoding,
             std::int64_t file_length, std::string extension);

  /// Returns the piece that must be held before the next step; of length 0 when none is needed.
  FilePiece wanted() const;
  /// Takes the piece that was wanted. False when the file has become shorter.
  bool hold(const FilePiece& piece, std::string bytes);
  /// Counts on through a part of a chunk.
  void step();
  bool complete() const { return complete_; }

  std::int64_t total() const { return total_; }
  /// Returns which hit begins at this file position; 0 when none does or it is not known yet.
  std::int64_t ordinal(std::int64_t position) const;

 private:
  void begin_chunk();
  void show_chunk(std::int64_t position);
  void end_chunk();
  void add(std::int64_t position);

  const HitFinder& finder_;
  const CodePage& page_;
  const std::string extension_;
  HeldSource source_;
  Chunk chunk_;                  ///< the one being walked over, as Find Next sees it
  bool in_chunk_ = false;        ///< false: the next one is still to be read
  bool shown_ = false;           ///< after its first hit a chunk is walked over as it shows
  std::int64_t at_ = 1;          ///< how far, 1-based in the chunk
  std::int64_t next_start_ = 1;  ///< of the chunk being walked over, or of the next one
  bool complete_ = false;
  std::int64_t total_ = 0;
  std::vector<std::uint64_t> places_;  ///< a bit for every byte of the file
};

}  // namespace tallowmere
