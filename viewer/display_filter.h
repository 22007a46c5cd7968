#pragma once

#include <cstddef>
#include <string_view>

#include "engine/code_page.h"
#include "viewer/chunk.h"

namespace tallowmere {

inline constexpr int inserted_breaks_limit = 1500;  ///< line breaks completed per chunk

/// Turns the control characters of a chunk as read into what a text box can show: a lone CR or LF
/// becomes a line break, and so does a NUL after printable text or between binary and text;
/// everything else that does not print becomes a dot. `extension` is that of the file: the header
/// of a Windows Write file gets a line of its own. `page` says how an invalid byte of a Unicode
/// file shows; null will do for others.
Chunk filter_chunk(const Chunk& read, std::string_view extension, const CodePage* page);

/// True when the filter ends a line before the byte at `at` of a text as read, which is not its
/// first one.
bool begins_line(std::string_view raw, std::size_t at);
bool begins_line(std::u16string_view raw, std::size_t at);

}  // namespace tallowmere
