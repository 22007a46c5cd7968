#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/text_encoding.h"

namespace tallowmere {

inline constexpr int chunk_length = 31000;  ///< bytes of a file that the text box shows at once

/// A stretch of the viewed file with its text: the bytes as read, or what the text box shows of
/// them. Positions in the file count from 1, bytes and characters of the chunk from 0. In a Unicode
/// file the chunk holds whole characters, and the text shown is counted in UTF-16 units: a
/// character beyond the first plane has two positions.
struct Chunk {
  std::int64_t chunk_start = 1;
  std::int64_t file_location = 0;  ///< of the last byte read; 1 before any; 0: there is no chunk
  bool last_chunk = false;         ///< the chunk reaches the end of the file
  std::string chunk_text{};        ///< as read; in a code page file also the text shown

  /// The byte of the chunk that each character of the text shown came from, and that of its end;
  /// ascending. Empty while the text is the bytes as read.
  std::vector<std::int32_t> origin{};
  /// The file position from which on lone line breaks are missing in the text shown; the one after
  /// the chunk when none is missing.
  std::int64_t crowded_from = 1;

  TextEncoding encoding = TextEncoding::code_page;
  std::u16string units{};  ///< the text shown of a Unicode file; half a pair alone is no character

  bool is_unicode() const { return encoding != TextEncoding::code_page; }

  /// Returns where the text as read begins: after the file's mark.
  std::size_t text_begin() const;

  // These are for the text shown:
  int length() const;
  /// True when a line break begins at this character.
  bool is_break(int character) const;
  /// Returns the character with which the first line break begins; -1 without one.
  int first_break() const;
  /// Returns the file position of a character; for the text's end, the one after its last byte.
  std::int64_t file_position(int character) const;
  /// Returns the position `count` characters after one; a character with two positions counts once.
  int behind_characters(int character, std::int64_t count) const;
  /// Returns the character for a file position, limited to the chunk; for a byte that does not
  /// show, the character of the next byte that does.
  int character_at(std::int64_t file_position) const;
  /// Converts a position of the chunk as read to one of the text shown; both count from 1.
  std::int64_t character_on_show(std::int64_t position) const;
};

/// A piece of a file, in bytes.
struct FilePiece {
  std::int64_t position = 1;
  std::int64_t length = 0;
};

/// Moves the start of a chunk that is about to be read into the file, and `position` (1-based in
/// the chunk) along. Returns how many bytes to read for the chunk.
std::int64_t place_chunk(Chunk& chunk, std::int64_t file_length, std::int64_t& position);
/// Returns what to read for a chunk of `length` bytes: more in a Unicode file, to find whole
/// characters.
FilePiece piece_for(const Chunk& chunk, std::int64_t length);
/// Gives the chunk its text from that piece, which may be shorter at the file's end. The chunk
/// moves to the beginning of a character, and leaves out a character that its end would cut.
void fill_chunk(Chunk& chunk, std::string bytes, const FilePiece& piece, std::int64_t length);

}  // namespace tallowmere
