#pragma once

#include <cstddef>

#include "engine/byte_search.h"
#include "engine/search_page.h"
#include "engine/text_encoding.h"

namespace tallowmere {

/// Bytes of a file, and room for what becomes of them.
struct DecodeSpan {
  const Byte* from;
  const Byte* from_end;
  Byte* into;
  Byte* into_end;
};

/// Makes one byte of the page of each character, and moves both begins behind what was done: until
/// the text or the room ends. A character that may go on behind the text is left, unless this is
/// the `last` of the file. The characters are those of next_character.
void decode(DecodeSpan& span, TextEncoding encoding, const SearchPage& page, bool last);

}  // namespace tallowmere
