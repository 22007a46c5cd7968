#include "viewer/chunk_source.h"

#include <algorithm>

#include "viewer/character_text.h"

namespace tallowmere {

std::size_t ChunkSource::text_begin(std::string_view window, std::int64_t position) const {
  if (position == 1) return mark_length(encoding(), window);
  return character_begin(window, longest_character - 1, position, encoding());
}

std::int64_t ChunkSource::step_characters(std::int64_t position, std::int64_t characters) {
  if (characters >= 0) {
    const std::string behind = read_window(position, characters * longest_character);
    const CharacterText text(behind, encoding());
    return position + static_cast<std::int64_t>(text.byte_at(characters));
  }
  const std::int64_t wanted = (1 - characters) * longest_character;
  const std::int64_t from = std::max<std::int64_t>(position - wanted, 1);
  const std::string before = read_window(from, position - from);
  if (std::ssize(before) < position - from) return position;
  const std::size_t begin = text_begin(before, from);
  const CharacterText text(std::string_view(before).substr(begin), encoding());
  const std::int64_t skipped = text.begun_before(before.size()) + characters;
  return from + static_cast<std::int64_t>(begin + text.byte_at(skipped));
}

std::string ChunkSource::read_characters(std::int64_t position, std::int64_t before,
                                         std::int64_t count) {
  const std::int64_t from = step_characters(position, -before);
  std::string text = read_window(from, count * longest_character);
  text.resize(CharacterText(text, encoding()).byte_at(count));
  return text;
}

/// In a Unicode file the shared characters may be too many for a chunk; then it moves on by one.
std::int64_t ChunkSource::next_chunk_start(const Chunk& chunk, std::int64_t shared_characters) {
  const std::int64_t shared = shared_characters - 1;
  if (chunk.is_unicode() && !chunk.last_chunk) {
    return std::max(step_characters(chunk.file_location + 1, -shared),
                    step_characters(chunk.chunk_start, 1));
  }
  if (chunk.is_unicode()) return 1;
  const std::int64_t next = chunk.last_chunk ? 1 : chunk.file_location + 1;
  return next > shared ? next - shared : next;
}

bool HeldSource::holds(std::int64_t position, std::int64_t length) const {
  const std::int64_t end = std::min(position + length, file_length_ + 1);
  position = std::max<std::int64_t>(position, 1);
  return position >= end || (position >= start_ && end <= start_ + std::ssize(bytes_));
}

std::string HeldSource::read_window(std::int64_t position, std::int64_t length) {
  length = std::min(length, file_length_ + 1 - position);
  if (length <= 0) return {};
  if (!holds(position, length)) throw NotHeld();
  return bytes_.substr(static_cast<std::size_t>(position - start_),
                       static_cast<std::size_t>(length));
}

Chunk HeldSource::read_chunk(std::int64_t start, std::int64_t& position) {
  Chunk chunk;
  chunk.chunk_start = start;
  chunk.encoding = encoding_;
  const std::int64_t length = place_chunk(chunk, file_length_, position);
  const std::int64_t asked = chunk.chunk_start;
  const FilePiece piece = piece_for(chunk, length);
  fill_chunk(chunk, read_window(piece.position, piece.length), piece, length);
  position += asked - chunk.chunk_start;
  return chunk;
}

}  // namespace tallowmere
