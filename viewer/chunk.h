#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/text_encoding.h"

namespace tallowmere {

inline constexpr int chunk_length = 31000;  ///< bytes of a file that show at once

/// A stretch of the viewed file with its text: the bytes as read, or what the text box shows of
/// them. Positions in the file count from 1, bytes and characters of the chunk from 0. In a Unicode
/// file the chunk holds whole characters, and what shows counts in UTF-16: a character beyond the
/// first plane has two positions.
struct Chunk {
  std::int64_t chunk_start = 1;
  std::int64_t file_location = 0;  ///< of the last byte read, 1 before any; 0: there is no chunk
  bool last_chunk = false;         ///< the chunk reaches the end of the file
  std::string chunk_text{};        ///< as read; of a code page file also what shows

  /// For every character of a text that shows, and for its end, the byte of the chunk that it
  /// stands for; ascending. Empty while the text is the bytes as read.
  std::vector<std::int32_t> origin{};
  /// The first file position from which on lone line breaks are missing in a text that shows; the
  /// one behind the chunk when none is.
  std::int64_t crowded_from = 1;

  TextEncoding encoding = TextEncoding::code_page;
  std::u16string units{};  ///< of a Unicode file what shows; half a pair alone is no character

  bool is_unicode() const { return encoding != TextEncoding::code_page; }

  /// Where the text as read begins: behind the mark of a file.
  std::size_t text_begin() const;

  // Of a text that shows:
  int length() const;
  /// True when a line break begins at this character.
  bool is_break(int character) const;
  /// The character with which the first line break begins; -1 without one.
  int first_break() const;
  /// The file position of a character; of the text's end that behind its last byte.
  std::int64_t file_position(int character) const;
  /// The character behind so many others from one on. What shows in two places is one.
  int behind_characters(int character, std::int64_t count) const;
  /// The character for a file position, fitted into the chunk; of a byte that does not show that of
  /// the next one that does.
  int character_at(std::int64_t file_position) const;
  /// Where what stood at a position of the chunk as read stands on show; both count from 1.
  std::int64_t character_on_show(std::int64_t position) const;
};

/// Bytes of a file.
struct FilePiece {
  std::int64_t position = 1;
  std::int64_t length = 0;
};

/// Moves the start of a chunk that is to be read into the file, and `position` (1-based in the
/// chunk) along. Returns how many bytes the chunk is to have.
std::int64_t place_chunk(Chunk& chunk, std::int64_t file_length, std::int64_t& position);
/// What is read for a chunk of so many bytes: in a Unicode file more, to find whole characters.
FilePiece piece_for(const Chunk& chunk, std::int64_t length);
/// Gives the chunk its text from that piece, which may be shorter at the file's end. The chunk
/// moves to the beginning of a character, and leaves out one that its end would cut.
void fill_chunk(Chunk& chunk, std::string bytes, const FilePiece& piece, std::int64_t length);

}  // namespace tallowmere
