#include "viewer/chunk_hits.h"

#include <algorithm>
#include <string>

#include "viewer/character_text.h"
#include "viewer/display_filter.h"

namespace tallowmere {

namespace {

Hit find_in_text(const HitFinder& finder, const HitText& in, std::int64_t start, bool forward) {
  return forward ? finder.get_highlight_position(in, start) : finder.get_prev_highlight(in, start);
}

HitText byte_text(ChunkSource& file, const Chunk& chunk) {
  HitText in{chunk.chunk_text, chunk.file_location, file.file_length()};
  in.read_window = [&file](std::int64_t position, std::int64_t length) {
    return file.read_window(position, length);
  };
  return in;
}

/// A chunk of a Unicode file; finds its hits by characters.
class UnicodeChunk {
 public:
  UnicodeChunk(ChunkSource& file, const Chunk& chunk, const HitFinder& finder)
      : file_(file),
        chunk_(chunk),
        finder_(finder),
        shows_(!chunk.origin.empty()),
        begin_(shows_ ? 0 : chunk.text_begin()),
        text_(shows_ ? unit_characters(chunk.units)
                     : CharacterText(std::string_view(chunk.chunk_text).substr(begin_),
                                     chunk.encoding)),
        bytes_(text_.search_bytes(*finder.search_page())),
        in_{bytes_, chunk.file_location, file.file_length()} {
    in_.read_around = [this](std::int64_t position, std::int64_t before, std::int64_t count) {
      return read_around(position, before, count);
    };
  }
  UnicodeChunk(const UnicodeChunk&) = delete;
  UnicodeChunk& operator=(const UnicodeChunk&) = delete;

  Hit find(std::int64_t start, bool forward) const {
    const std::int64_t place = place_of(start);
    // Going back, the character that holds the place is the last one to begin with.
    const std::int64_t begun = begun_before(forward ? place : place + 1);
    Hit hit = find_in_text(finder_, in_, forward ? begun + 1 : begun, forward);
    if (hit.position != 0) hit.position = position_of(hit.position) + 1;
    return hit;
  }

  HitRange hits(std::int64_t start, std::int64_t end, int most) const {
    const std::int64_t first = begun_before(place_of(start)) + 1;
    const std::int64_t last = begun_before(place_of(end)) + 1;
    HitRange range = finder_.hits_between(in_, first, last, most);
    range.next = range.next == last ? end : position_of(range.next) + 1;
    // The hits are taken one after another, so that the text is walked over once.
    std::int64_t character = 1;
    std::size_t at = 0;
    for (Hit& hit : range.hits) {
      at += text_.from(at).byte_at(hit.position - character);
      character = hit.position;
      hit.position = static_cast<std::int64_t>(begin_ + at) / unit() + 1;
    }
    return range;
  }

 private:
  std::int64_t unit() const { return shows_ ? 2 : 1; }

  /// Returns the byte of the text for a position in the chunk.
  std::int64_t place_of(std::int64_t position) const {
    return (position - 1) * unit() - static_cast<std::int64_t>(begin_);
  }
  std::int64_t begun_before(std::int64_t place) const {
    const auto behind = static_cast<std::size_t>(std::max<std::int64_t>(place, 0));
    return behind < text_.size() ? text_.begun_before(behind) : std::ssize(bytes_);
  }

  /// Returns where in the chunk, from 0, a character of the text begins; `character` is 1-based.
  std::int64_t position_of(std::int64_t character) const {
    return static_cast<std::int64_t>(begin_ + text_.byte_at(character - 1)) / unit();
  }

  std::string read_around(std::int64_t character, std::int64_t before, std::int64_t count) const {
    const std::int64_t position = position_of(character);
    const std::int64_t in_file =
        shows_ ? chunk_.file_position(static_cast<int>(position)) : chunk_.chunk_start + position;
    const std::string read = file_.read_characters(in_file, before, count);
    return CharacterText(read, chunk_.encoding).search_bytes(*finder_.search_page());
  }

  ChunkSource& file_;
  const Chunk& chunk_;
  const HitFinder& finder_;
  bool shows_;
  std::size_t begin_;  ///< of the text in the chunk
  CharacterText text_;
  std::string bytes_;
  HitText in_;
};

}  // namespace

Hit find_in_chunk(ChunkSource& file, const Chunk& chunk, const HitFinder& finder,
                  std::int64_t start, bool forward) {
  if (start < 1) return {};
  if (!chunk.is_unicode()) return find_in_text(finder, byte_text(file, chunk), start, forward);
  if (!finder.unicode()) return {};
  return UnicodeChunk(file, chunk, *finder.unicode()).find(start, forward);
}

HitRange hits_in_chunk(ChunkSource& file, const Chunk& chunk, const HitFinder& finder,
                       std::int64_t start, std::int64_t end, int most) {
  if (!chunk.is_unicode()) {
    return finder.hits_between(byte_text(file, chunk), start, end, most);
  }
  if (!finder.unicode()) return {{}, end};
  return UnicodeChunk(file, chunk, *finder.unicode()).hits(start, end, most);
}

// Line breaks that were completed for display shift the windows of NEAR.
std::int64_t bytes_beside(const HitFinder& finder) {
  const std::int64_t reach = finder.reach();
  return reach == 0 ? 0 : inserted_breaks_limit + (reach + 1) * longest_character;
}

}  // namespace tallowmere
