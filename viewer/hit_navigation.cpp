#include "viewer/hit_navigation.h"

#include <algorithm>
#include <optional>

#include "viewer/chunk_hits.h"

namespace tallowmere {

namespace {

/// Chunks of a file just opened that are searched before its beginning is shown meanwhile: about
/// ten milliseconds' worth.
constexpr int patient_chunks = 64;

}  // namespace

/// One step's walk from chunk to chunk until it finds a hit or has gone once round the file. It
/// begins in the chunk that shows, or, in a file just opened, with the first chunk.
class HitNavigation::Walk {
 public:
  enum class Outcome { found, none, stopped, no_file };

  Walk(HitNavigation& navigation, const HitFinder& finder, bool forward, std::int64_t start)
      : navigation_(navigation),
        viewer_(navigation.viewer_),
        finder_(finder),
        forward_(forward),
        start_(start),
        fresh_(viewer_.chunk_pending()),
        in_shown_chunk_(!fresh_) {}

  Outcome run() {
    if (fresh_) {
      if (const auto end = load()) return *end;
    }
    while (!find_in_chunk()) {
      const bool at_end = forward_ ? chunk().last_chunk : chunk().chunk_start == 1;
      if (at_end && wrapped_) return Outcome::none;
      wrapped_ = wrapped_ || at_end;
      next_start_ = next_chunk_start();
      if (const auto end = load()) return *end;
    }
    return Outcome::found;
  }

  Hit hit() const { return hit_; }
  StepMade step_made() const { return {forward_, wrapped_, fresh_}; }
  bool wrapped() const { return wrapped_; }
  /// True when the text box shows the chunk that the hit is in.
  bool in_shown_chunk() const { return in_shown_chunk_; }
  /// True when the file has just been opened, or opened again: no chunk of it was on view before.
  bool fresh() const { return fresh_; }

 private:
  /// Returns the chunk that is being searched.
  const Chunk& chunk() const {
    return in_shown_chunk_ ? viewer_.shown_chunk() : viewer_.loaded_chunk();
  }

  std::int64_t next_chunk_start() const {
    if (forward_) return viewer_.next_chunk_start(chunk(), finder_.max_term_len());
    const std::int64_t shared = finder_.max_term_len() - 1;
    const std::int64_t here = chunk().chunk_start;
    if (here == 1) return viewer_.file_length() - chunk_length + 1;
    // Counted in characters, what is shared may be too long for a chunk.
    if (!chunk().is_unicode()) return here + shared - chunk_length;
    return std::min(viewer_.step_characters(here, shared) - chunk_length, here - 1);
  }

  /// Makes the chunk at next_start_ the one to search; an outcome ends the walk.
  std::optional<Outcome> load() {
    if (wrapped_ && next_start_ == first_loaded_)
      return Outcome::none;  // from here on all has been searched
    if (loads_ > 0 && !navigation_.host_.go_on()) return Outcome::stopped;
    if (fresh_ && loads_ == patient_chunks && !show_beginning()) return Outcome::no_file;
    ++loads_;
    in_shown_chunk_ = wrapped_ && next_start_ <= 1 && viewer_.shown_chunk().chunk_start == 1 &&
                      viewer_.shows_current();
    if (in_shown_chunk_) {
      start_ = forward_ ? 1 : chunk().length();
      return std::nullopt;
    }
    start_ = forward_ ? 1 : chunk_length;
    const ChunkResult result = viewer_.get_file_chunk(next_start_, start_);
    if (result == ChunkResult::no_file || result == ChunkResult::failed) return Outcome::no_file;
    if (result == ChunkResult::reopened) begin_afresh();
    if (!first_loaded_) first_loaded_ = next_start_;
    return std::nullopt;
  }

  void begin_afresh() {
    forward_ = true;
    start_ = 1;
    wrapped_ = false;
    fresh_ = true;
    next_start_ = 1;
    first_loaded_ = 1;
  }

  /// Shows the file's beginning while a long search for the first hit goes on; false when there is
  /// no file any more.
  bool show_beginning() {
    const ChunkResult result = navigation_.load_first_chunk();
    // A file that has changed meanwhile is searched from its beginning.
    if (result == ChunkResult::reopened) begin_afresh();
    return result == ChunkResult::ok || result == ChunkResult::reopened;
  }

  bool find_in_chunk() {
    hit_ = tallowmere::find_in_chunk(viewer_, chunk(), finder_, start_, forward_);
    return hit_.position != 0;
  }

  HitNavigation& navigation_;
  FileViewer& viewer_;
  const HitFinder& finder_;
  bool forward_;
  std::int64_t start_;  ///< 1-based in the chunk
  bool fresh_;
  bool in_shown_chunk_;
  bool wrapped_ = false;
  /// Where the next chunk is to begin. Not limited to the file: going back, it decides how much of
  /// that chunk is searched.
  std::int64_t next_start_ = 1;
  std::optional<std::int64_t> first_loaded_;  ///< where the first chunk was asked for
  int loads_ = 0;
  Hit hit_;
};

HitNavigation::HitNavigation(FileViewer& viewer, TextFace& face, ViewerHost& host)
    : viewer_(viewer), face_(face), host_(host) {}

FindResult HitNavigation::find_next(const HitFinder& finder) {
  return find(finder, true);
}

FindResult HitNavigation::find_prev(const HitFinder& finder) {
  return find(finder, viewer_.chunk_pending());
}

FindResult HitNavigation::find(const HitFinder& finder, bool forward) {
  if (!viewer_.loaded()) return FindResult::no_file;
  const FileViewer::Step step(viewer_);
  if (finder.empty()) return report_none(finder);
  const std::int64_t caret = face_.selection().start;
  Walk walk(*this, finder, forward, forward ? caret + 2 : caret);
  switch (walk.run()) {
    case Walk::Outcome::found:
      return show_hit(walk);
    case Walk::Outcome::none:
      return report_none(finder);
    case Walk::Outcome::no_file:
      return FindResult::no_file;
    case Walk::Outcome::stopped:
      break;
  }
  if (walk.fresh() && show_first_chunk() == FindResult::no_file) return FindResult::no_file;
  return FindResult::stopped;
}

FindResult HitNavigation::show_hit(const Walk& walk) {
  last_step_ = walk.step_made();
  std::int64_t position = walk.hit().position;
  face_.set_redraw(false);
  if (!walk.in_shown_chunk()) viewer_.fill_textbox(position);
  face_.enable(true);
  const auto caret = static_cast<int>(position - 1);
  face_.select(caret, 0);
  center_highlight();
  const int end = viewer_.shown_chunk().behind_characters(caret, walk.hit().length);
  face_.select(caret, end - caret);
  face_.set_redraw(true);
  if (walk.wrapped()) host_.beep();
  viewer_.update_scroll_value();
  return FindResult::found;
}

FindResult HitNavigation::show_first_chunk() {
  const ChunkResult result = load_first_chunk();
  const bool shown = result == ChunkResult::ok || result == ChunkResult::reopened;
  return shown ? FindResult::found : FindResult::no_file;
}

ChunkResult HitNavigation::load_first_chunk() {
  std::int64_t position = 1;
  int line = 0;
  const ChunkResult result = viewer_.load_text_chunk(1, position, line);
  viewer_.update_scroll_value();
  return result;
}

FindResult HitNavigation::report_none(const HitFinder& finder) {
  if (show_first_chunk() == FindResult::no_file) return FindResult::no_file;
  if (!finder.empty()) {
    host_.message("Selected file does not contain search criteria.",
                  "Cannot Highlight Search Criteria", false);
  }
  return FindResult::not_found;
}

// By itself the text box would scroll only until the line shows at its edge.
void HitNavigation::center_highlight() {
  const int line = face_.line_from_char(face_.selection().start);
  face_.set_first_visible_line(line - face_.visible_lines() / 2);
}

}  // namespace tallowmere
