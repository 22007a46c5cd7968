#include "viewer/hit_navigation.h"

#include <algorithm>
#include <optional>

namespace tallowmere {

namespace {

/// Chunks of a file just opened that are searched before its beginning shows meanwhile: about
/// ten milliseconds' worth.
constexpr int patient_chunks = 64;

}  // namespace

/// The walk of one step from chunk to chunk until a hit is found or the file has been walked once
/// round.
class HitNavigation::Walk {
 public:
  enum class Outcome { found, none, stopped, no_file };

  Walk(FileViewer& viewer, ViewerHost& host, const HitFinder& finder, bool forward,
       std::int64_t start)
      : viewer_(viewer),
        host_(host),
        finder_(finder),
        forward_(forward),
        start_(start),
        fresh_(viewer.chunk_pending),
        origin_(viewer.place()) {}

  Outcome run() {
    while (true) {
      if (viewer_.chunk_pending) {
        const auto end = load();
        if (end) return *end;
      }
      if (find_in_chunk()) return Outcome::found;
      const bool at_end = forward_ ? viewer_.place().last_chunk : viewer_.place().chunk_start == 1;
      if (at_end && wrapped_) return Outcome::none;
      wrapped_ = wrapped_ || at_end;
      viewer_.chunk_pending = true;
    }
  }

  Hit hit() const { return hit_; }
  bool wrapped() const { return wrapped_; }
  /// The text box shows the chunk that the hit is in.
  bool in_shown_chunk() const { return in_shown_chunk_; }
  /// The file has just been opened, or opened afresh: no chunk of it was on view before.
  bool fresh() const { return fresh_; }
  const ChunkPlace& origin() const { return origin_; }

 private:
  std::int64_t next_chunk_start() const {
    const ChunkPlace& place = viewer_.place();
    const std::int64_t shared = finder_.max_term_len() - 1;
    if (!forward_) {
      return place.chunk_start == 1 ? viewer_.file_length() - chunk_length + 1
                                    : place.chunk_start + shared - chunk_length;
    }
    const std::int64_t next = place.last_chunk ? 1 : place.file_location + 1;
    return next > shared ? next - shared : next;
  }

  /// Makes the next chunk the one to look through; an outcome ends the walk.
  std::optional<Outcome> load() {
    // Not fitted into the file: going back, it tells how far the chunk is looked through.
    const std::int64_t chunk_start = next_chunk_start();
    if (wrapped_ && chunk_start == first_loaded_)
      return Outcome::none;  // from here on all is known
    if (loads_ > 0 && !host_.go_on()) return Outcome::stopped;
    if (fresh_ && loads_ == patient_chunks && !show_beginning()) return Outcome::no_file;
    ++loads_;
    in_shown_chunk_ =
        wrapped_ && chunk_start <= 1 && origin_.chunk_start == 1 && viewer_.shows_current();
    if (in_shown_chunk_) {
      viewer_.take_shown(origin_);
      start_ = forward_ ? 1 : std::ssize(viewer_.chunk_text());
      return std::nullopt;
    }
    viewer_.set_chunk_start(next_chunk_start());
    start_ = forward_ ? 1 : chunk_length;
    const ChunkResult result = viewer_.get_file_chunk(start_);
    if (result == ChunkResult::no_file || result == ChunkResult::failed) return Outcome::no_file;
    if (result == ChunkResult::reopened) begin_afresh();
    if (!first_loaded_) first_loaded_ = chunk_start;
    return std::nullopt;
  }

  void begin_afresh() {
    forward_ = true;
    start_ = 1;
    wrapped_ = false;
    fresh_ = true;
    origin_ = viewer_.place();
    first_loaded_ = 1;
  }

  /// Something to look at while a long search for the first hit goes on; false when it is over.
  bool show_beginning() {
    const ChunkPlace place = viewer_.place();
    std::int64_t position = 1;
    int line = 0;
    const ChunkResult result = viewer_.load_text_chunk(1, position, line);
    if (result != ChunkResult::ok && result != ChunkResult::reopened) return false;
    // A file that has changed meanwhile is searched from its beginning.
    viewer_.take_shown(result == ChunkResult::ok ? place : ChunkPlace{1, 1, true});
    if (result == ChunkResult::reopened) begin_afresh();
    viewer_.chunk_pending = true;
    return true;
  }

  bool find_in_chunk() {
    const HitText in{viewer_.chunk_text(), viewer_.place().file_location, viewer_.file_length()};
    if (start_ < 1) return false;
    hit_ = forward_ ? finder_.get_highlight_position(in, start_)
                    : finder_.get_prev_highlight(in, start_);
    return hit_.position != 0;
  }

  FileViewer& viewer_;
  ViewerHost& host_;
  const HitFinder& finder_;
  bool forward_;
  std::int64_t start_;  ///< 1-based in the chunk
  bool fresh_;
  ChunkPlace origin_;
  bool wrapped_ = false;
  bool in_shown_chunk_ = false;
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
  return find(finder, viewer_.chunk_pending);
}

FindResult HitNavigation::find(const HitFinder& finder, bool forward) {
  if (!viewer_.loaded()) return FindResult::no_file;
  const FileViewer::Step step(viewer_);
  if (finder.empty()) return report_none(finder);
  const std::int64_t caret = face_.selection().start;
  Walk walk(viewer_, host_, finder, forward, forward ? caret + 2 : caret);
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
  if (walk.fresh())
    return show_first_chunk() == FindResult::found ? FindResult::stopped : FindResult::no_file;
  viewer_.take_shown(walk.origin());
  viewer_.chunk_pending = false;
  return FindResult::stopped;
}

FindResult HitNavigation::show_hit(const Walk& walk) {
  std::int64_t position = walk.hit().position;
  face_.set_redraw(false);
  if (viewer_.chunk_pending) {
    if (!walk.in_shown_chunk()) viewer_.fill_textbox(position);
    viewer_.chunk_pending = false;
  }
  face_.enable(true);
  const auto caret = static_cast<int>(position - 1);
  face_.select(caret, 0);
  center_highlight();
  face_.select(caret, static_cast<int>(walk.hit().length));
  face_.set_redraw(true);
  if (walk.wrapped()) host_.beep();
  viewer_.update_scroll_value();
  return FindResult::found;
}

FindResult HitNavigation::show_first_chunk() {
  std::int64_t position = 1;
  int line = 0;
  const ChunkResult result = viewer_.load_text_chunk(1, position, line);
  if (result != ChunkResult::ok && result != ChunkResult::reopened) return FindResult::no_file;
  face_.select(0, 0);
  viewer_.update_scroll_value();
  return FindResult::found;
}

FindResult HitNavigation::report_none(const HitFinder& finder) {
  if (show_first_chunk() == FindResult::no_file) return FindResult::no_file;
  if (!finder.empty()) {
    host_.message("Selected file does not contain search criteria.",
                  "Cannot Highlight Search Criteria", false);
  }
  return FindResult::not_found;
}

// The text box would scroll by itself only until the line shows at its edge.
void HitNavigation::center_highlight() {
  const int line = face_.line_from_char(face_.selection().start);
  const int last_top = std::max(face_.line_count() - face_.visible_lines(), 0);
  face_.set_first_visible_line(std::clamp(line - face_.visible_lines() / 2, 0, last_top));
}

}  // namespace tallowmere
