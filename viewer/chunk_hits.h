#pragma once

#include <cstdint>

#include "viewer/file_viewer.h"
#include "viewer/hit_finder.h"

namespace tallowmere {

/// The first hit in a chunk of the viewed file, as read or as it shows, that begins at or behind
/// `start`, or going back the last one that begins at or before it. Its position counts from 1 in
/// the chunk, its length in characters.
Hit find_in_chunk(FileViewer& viewer, const Chunk& chunk, const HitFinder& finder,
                  std::int64_t start, bool forward);

}  // namespace tallowmere
