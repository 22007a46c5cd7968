#pragma once

#include <cstdint>

#include "viewer/chunk.h"
#include "viewer/chunk_source.h"
#include "viewer/hit_finder.h"

namespace tallowmere {

/// Finds the first hit in a chunk, as read or as it shows, that begins at or after `start`, or,
/// going back, the last one that begins at or before it. Its position counts from 1 in the chunk,
/// its length in characters.
Hit find_in_chunk(ChunkSource& file, const Chunk& chunk, const HitFinder& finder,
                  std::int64_t start, bool forward);

/// Finds all hits that begin at or after `start` and before `end`, as find_in_chunk() finds them
/// one after another. Ends early after `most` occurrences of the terms, whether hits or not.
HitRange hits_in_chunk(ChunkSource& file, const Chunk& chunk, const HitFinder& finder,
                       std::int64_t start, std::int64_t end, int most);

/// Returns how many bytes on both sides of a chunk may decide whether something in it is a hit.
std::int64_t bytes_beside(const HitFinder& finder);

}  // namespace tallowmere
