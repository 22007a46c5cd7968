#include "viewer/chunk.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "viewer/character_text.h"

namespace tallowmere {

namespace {

// What separates the lines of the text shown.
constexpr std::string_view byte_break = "\r\n";
constexpr std::u16string_view unit_break = u"\r\n";

}  // namespace

std::size_t Chunk::text_begin() const {
  return chunk_start == 1 ? mark_length(encoding, chunk_text) : 0;
}

int Chunk::length() const {
  return static_cast<int>(is_unicode() ? units.size() : chunk_text.size());
}

bool Chunk::is_break(int character) const {
  if (character < 0 || character >= length()) return false;
  const auto at = static_cast<std::size_t>(character);
  return is_unicode() ? std::u16string_view(units).substr(at).starts_with(unit_break)
                      : std::string_view(chunk_text).substr(at).starts_with(byte_break);
}

int Chunk::first_break() const {
  const std::size_t at = is_unicode() ? units.find(unit_break) : chunk_text.find(byte_break);
  return at == std::string::npos ? -1 : static_cast<int>(at);
}

std::int64_t Chunk::file_position(int character) const {
  assert(!origin.empty());
  const int end = static_cast<int>(origin.size()) - 1;
  return chunk_start + origin[static_cast<std::size_t>(std::clamp(character, 0, end))];
}

int Chunk::behind_characters(int character, std::int64_t count) const {
  if (!is_unicode()) return static_cast<int>(character + count);
  const std::u16string_view rest =
      std::u16string_view(units).substr(static_cast<std::size_t>(character));
  return character + static_cast<int>(unit_characters(rest).byte_at(count) / 2);
}

int Chunk::character_at(std::int64_t file_position) const {
  assert(!origin.empty());
  const auto end = origin.end() - 1;
  return static_cast<int>(std::lower_bound(origin.begin(), end, file_position - chunk_start) -
                          origin.begin());
}

std::int64_t Chunk::character_on_show(std::int64_t position) const {
  const int character = character_at(chunk_start + position - 1);
  const bool second = is_second_of_pair(units, static_cast<std::size_t>(character));
  return character + (second ? 2 : 1);
}

// The first move adds the old start itself, not the old start less one: going back from a place
// near the beginning of a file, one more character is looked at.
std::int64_t place_chunk(Chunk& chunk, std::int64_t file_length, std::int64_t& position) {
  std::int64_t& start = chunk.chunk_start;
  if (start < 1) {
    position += start;
    start = 1;
  }
  chunk.last_chunk = start + chunk_length > file_length;
  if (!chunk.last_chunk) return chunk_length;
  const std::int64_t old_start = start;
  start = std::max<std::int64_t>(file_length - chunk_length + 1, 1);
  position += old_start - start;
  return file_length - start + 1;
}

FilePiece piece_for(const Chunk& chunk, std::int64_t length) {
  if (!chunk.is_unicode()) return {chunk.chunk_start, length};
  const std::int64_t beside = longest_character - 1;
  const std::int64_t from = std::max<std::int64_t>(chunk.chunk_start - beside, 1);
  return {from, chunk.chunk_start - from + length + beside};
}

void fill_chunk(Chunk& chunk, std::string bytes, const FilePiece& piece, std::int64_t length) {
  if (chunk.is_unicode()) {
    const std::int64_t lead = chunk.chunk_start - piece.position;
    const auto boundary = [&](std::int64_t at) {
      return character_begin(bytes, static_cast<std::size_t>(at), piece.position, chunk.encoding);
    };
    const std::size_t begin = boundary(lead);
    const std::size_t end = chunk.last_chunk ? bytes.size() : boundary(lead + length);
    bytes = bytes.substr(begin, end - begin);
    chunk.chunk_start = piece.position + static_cast<std::int64_t>(begin);
  }
  chunk.file_location = std::max<std::int64_t>(chunk.chunk_start + std::ssize(bytes) - 1, 1);
  chunk.chunk_text = std::move(bytes);
}

}  // namespace tallowmere
