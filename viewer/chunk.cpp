#include "viewer/chunk.h"

#include <algorithm>
#include <cassert>

namespace tallowmere {

std::int64_t Chunk::file_position(int character) const {
  assert(!origin.empty());
  const int end = static_cast<int>(origin.size()) - 1;
  return chunk_start + origin[static_cast<std::size_t>(std::clamp(character, 0, end))];
}

int Chunk::character_at(std::int64_t file_position) const {
  assert(!origin.empty());
  const auto end = origin.end() - 1;
  return static_cast<int>(std::lower_bound(origin.begin(), end, file_position - chunk_start) -
                          origin.begin());
}

}  // namespace tallowmere
