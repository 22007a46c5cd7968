#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tallowmere {

inline constexpr int chunk_length = 31000;          ///< bytes of a file that show at once
inline constexpr int inserted_breaks_limit = 1500;  ///< line breaks completed per chunk

/// A chunk as a text box can show it.
struct FilteredChunk {
  std::string text;
  /// For every character of `text` the 0-based byte of the chunk that it stands for; ascending.
  std::vector<std::int32_t> origin;
  /// The first byte of the chunk at which a lone CR or LF was dropped because the limit of
  /// completed breaks was reached; the chunk's length when that never happened.
  std::int32_t crowded_from = 0;

  /// The 0-based place in `text` of a 0-based byte of the chunk; of a dropped byte that of the next
  /// one that shows. The text's length for a byte behind the chunk.
  std::int64_t position_of(std::int64_t byte) const;
};

/// Turns control characters into what a text box can show: a CR or LF alone becomes a CR LF pair,
/// a NUL behind printable text or between binary and text a line break, everything else that does
/// not print a dot.
///
/// `header_end` is the 0-based place in the chunk of the last byte of a word processor's header,
/// which becomes a line break; negative: none.
FilteredChunk filter_chunk(std::string_view raw, std::int64_t header_end);

/// Where the 128-byte header of a Windows Write file ends in the chunk at the 1-based file
/// position `chunk_start`; -1 when this is no such file or the place is not in the chunk.
std::int64_t write_header_end(std::string_view raw, std::string_view extension,
                              std::int64_t chunk_start);

}  // namespace tallowmere
