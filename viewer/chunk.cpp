#include "viewer/chunk.h"

#include <algorithm>
#include <cassert>

#include "viewer/character_text.h"

namespace tallowmere {

namespace {

// What parts the lines of a text that shows.
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

}  // namespace tallowmere
