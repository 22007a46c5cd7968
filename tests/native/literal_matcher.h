#pragma once

#include <string>

#include "engine/unicode_search.h"

namespace tallowmere {

/// The matcher as one would write it down without a thought for speed: strings, one-based
/// positions, every neighbour and every window taken from the file. The fast one is
/// compared with it.
bool matches_literally(const CompiledSearch& search, const CodePage& page, const std::string& file);

/// The same for a file that is read as Unicode text when it is such.
bool matches_literally(const CompiledSearch& in_page, const UnicodeSearch& unicode,
                       const CodePage& page, const std::string& file);

}  // namespace tallowmere
