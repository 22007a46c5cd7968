#pragma once

#include <cstddef>

#include "engine/byte_search.h"
#include "engine/search_page.h"
#include "engine/text_encoding.h"

namespace tallowmere {

/// Bytes of a file, and room for their decoded text.
struct DecodeSpan {
  const Byte* from;
  const Byte* from_end;
  Byte* into;
  Byte* into_end;
};

/// Decodes each character into one byte of the page until the text or the room ends, and moves both
/// begins past what was done. A character that may go on after the text is left, unless this is the
/// `last` text of the file. The characters are those of next_character.
void decode(DecodeSpan& span, TextEncoding encoding, const SearchPage& page, bool last);

}  // namespace tallowmere
