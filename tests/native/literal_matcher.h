#pragma once

#include <string>

#include "engine/compiled_search.h"

namespace tallowmere {

/// The matcher as one would write it down without a thought for speed: strings, one-based
/// positions, every neighbour and every window taken from the file. The fast one is held
/// against it.
bool matches_literally(const CompiledSearch& search, const CodePage& page, const std::string& file);

}  // namespace tallowmere
