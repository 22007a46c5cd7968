#include "viewer/chunk_hits.h"

#include <algorithm>
#include <string>

#include "viewer/character_text.h"

namespace tallowmere {

namespace {

Hit find_in_text(const HitFinder& finder, const HitText& in, std::int64_t start, bool forward) {
  return forward ? finder.get_highlight_position(in, start) : finder.get_prev_highlight(in, start);
}

/// A chunk of a Unicode file, whose hits are looked for by characters.
class UnicodeChunk {
 public:
  UnicodeChunk(FileViewer& viewer, const Chunk& chunk, const HitFinder& finder)
      : viewer_(viewer),
        chunk_(chunk),
        finder_(finder),
        shows_(!chunk.origin.empty()),
        begin_(shows_ ? 0 : chunk.text_begin()),
        text_(shows_ ? unit_characters(chunk.units)
                     : CharacterText(std::string_view(chunk.chunk_text).substr(begin_),
                                     chunk.encoding)) {}

  Hit find(std::int64_t start, bool forward) const {
    const std::string bytes = text_.search_bytes(*finder_.search_page());
    const HitText in{bytes, chunk_.file_location, viewer_.file_length(),
                     [this](std::int64_t position, std::int64_t before, std::int64_t count) {
                       return read_around(position, before, count);
                     }};
    const std::int64_t place = (start - 1) * unit() - static_cast<std::int64_t>(begin_);
    // Going back, the character that holds the place is the last one to begin with.
    const auto behind =
        static_cast<std::size_t>(std::max<std::int64_t>(forward ? place : place + 1, 0));
    const std::int64_t begun =
        behind < text_.size() ? text_.begun_before(behind) : std::ssize(bytes);
    Hit hit = find_in_text(finder_, in, forward ? begun + 1 : begun, forward);
    if (hit.position != 0) hit.position = position_of(hit.position) + 1;
    return hit;
  }

 private:
  std::int64_t unit() const { return shows_ ? 2 : 1; }

  /// Where in the chunk, from 0, a character of the text begins, which counts from 1.
  std::int64_t position_of(std::int64_t character) const {
    return static_cast<std::int64_t>(begin_ + text_.byte_at(character - 1)) / unit();
  }

  std::string read_around(std::int64_t character, std::int64_t before, std::int64_t count) const {
    const std::int64_t position = position_of(character);
    const std::int64_t in_file =
        shows_ ? chunk_.file_position(static_cast<int>(position)) : chunk_.chunk_start + position;
    const std::string read = viewer_.read_characters(in_file, before, count);
    return CharacterText(read, chunk_.encoding).search_bytes(*finder_.search_page());
  }

  FileViewer& viewer_;
  const Chunk& chunk_;
  const HitFinder& finder_;
  bool shows_;
  std::size_t begin_;  ///< of the text in the chunk
  CharacterText text_;
};

}  // namespace

Hit find_in_chunk(FileViewer& viewer, const Chunk& chunk, const HitFinder& finder,
                  std::int64_t start, bool forward) {
  if (start < 1) return {};
  if (!chunk.is_unicode()) {
    const HitText in{chunk.chunk_text, chunk.file_location, viewer.file_length()};
    return find_in_text(finder, in, start, forward);
  }
  if (!finder.unicode()) return {};
  return UnicodeChunk(viewer, chunk, *finder.unicode()).find(start, forward);
}

}  // namespace tallowmere
