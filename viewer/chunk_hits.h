#pragma once

#include <cstdint>

#include "viewer/chunk.h"
#include "viewer/chunk_source.h"
#include "viewer/hit_finder.h"

namespace tallowmere {

/// The first hit in a chunk of a file, as read or as it shows, that begins at or behind `start`, or
/// going back the last one that begins at or before it. Its position counts from 1 in the chunk,
/// its length in characters.
Hit find_in_chunk(ChunkSource& file, const Chunk& chunk, const HitFinder& finder,
                  std::int64_t start, bool forward);

/// All of them that begin from `start` on and before `end`, as find_in_chunk() finds one after the
/// other. Ends early behind `most` occurrences of the terms, hits or none.
HitRange hits_in_chunk(ChunkSource& file, const Chunk& chunk, const HitFinder& finder,
                       std::int64_t start, std::int64_t end, int most);

/// So many bytes on both sides of a chunk may decide whether something in it is a hit.
std::int64_t bytes_beside(const HitFinder& finder);

}  // namespace tallowmere
