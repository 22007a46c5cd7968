#include "viewer/view_scroll.h"

#include <algorithm>
#include <cmath>

namespace tallowmere {

void ViewScroll::scroll_lines(int lines) {
  if (!viewer_.shows_chunk() || lines == 0) return;
  ChunkShift shift(viewer_, face_);
  const int top = face_.first_visible_line();
  finish(shift, lines > 0 ? move_down(shift, top, lines) : move_up(shift, top, -lines));
}

/// Keeps one line of the page before on view.
void ViewScroll::scroll_pages(int pages) {
  scroll_lines(pages * std::max(face_.visible_lines() - 1, 1));
}

void ViewScroll::scroll_to(int value) {
  if (!viewer_.shows_chunk()) return;
  ChunkShift shift(viewer_, face_);
  if (value <= 0) {
    if (shift.load_start()) finish(shift, 0);
  } else if (value >= scroll_maximum) {
    if (shift.load_end()) finish(shift, last_top());
  } else {
    const std::int64_t rest =
        viewer_.file_length() - shift.bytes_on_view(face_.first_visible_line());
    const double fraction = static_cast<double>(value) / scroll_maximum;
    finish(shift, go_to(shift, 1 + std::llround(fraction * static_cast<double>(rest))));
  }
}

void ViewScroll::go_to_start(bool extend) {
  if (!viewer_.shows_chunk()) return;
  ChunkShift shift(viewer_, face_);
  if (!shift.load_start()) return;
  finish(shift, 0);
  if (!extend) face_.select(0, 0);
}

void ViewScroll::go_to_end(bool extend) {
  if (!viewer_.shows_chunk()) return;
  ChunkShift shift(viewer_, face_);
  if (!shift.load_end()) return;
  finish(shift, last_top());
  if (!extend) face_.select(viewer_.shown_chunk().length(), 0);
}

void ViewScroll::make_room(bool down, bool caret_first) {
  if (!viewer_.shows_chunk()) return;
  ChunkShift shift(viewer_, face_, caret_first);
  const TextSelection selection = face_.selection();
  const int page = face_.visible_lines();
  const int line = face_.line_from_char(selection.start + (caret_first ? 0 : selection.length));
  int top = face_.first_visible_line();
  // A caret out of view comes into view with the key.
  if (line < top || line >= top + page) top = line;
  const ChunkShift::Extent whole = shift.whole_lines();
  const bool room = down ? whole.to_end || line + 2 * page <= whole.end
                         : whole.from_start || top - page >= whole.first;
  if (room) return;
  if (down ? shift.load_below(top) : shift.load_above(top)) finish(shift, top);
}

int ViewScroll::last_top() const {
  return std::max(face_.line_count() - face_.visible_lines(), 0);
}

/// Loads what `lines` more lines need; returns the line with which the view then begins.
int ViewScroll::move_down(ChunkShift& shift, int top, int lines) const {
  const int page = face_.visible_lines();
  while (lines > 0) {
    const ChunkShift::Extent whole = shift.whole_lines();
    const std::int64_t target = std::int64_t{top} + lines;
    if (whole.to_end) return static_cast<int>(std::min<std::int64_t>(target, last_top()));
    if (target + 2 * page <= whole.end) return static_cast<int>(target);
    int next = static_cast<int>(std::min<std::int64_t>(target, std::max(whole.end - 1, top)));
    const std::int64_t from = shift.line_position(top);
    lines -= next - top;
    const bool moved = next > top;
    top = next;
    if (!shift.load_below(next)) break;
    // A line that wraps differently now may begin further up.
    if (moved && shift.line_position(next) <= from && next < face_.line_count() - 1) ++next;
    top = next;
  }
  return top;
}

int ViewScroll::move_up(ChunkShift& shift, int top, int lines) const {
  const int page = face_.visible_lines();
  while (lines > 0) {
    const ChunkShift::Extent whole = shift.whole_lines();
    const std::int64_t target = std::int64_t{top} - lines;
    if (whole.from_start) return static_cast<int>(std::max<std::int64_t>(target, 0));
    if (target >= whole.first + page) return static_cast<int>(target);
    const int next = static_cast<int>(std::max<std::int64_t>(target, std::min(top, whole.first)));
    lines -= top - next;
    top = next;
    if (!shift.load_above(top)) break;
  }
  return top;
}

int ViewScroll::go_to(ChunkShift& shift, std::int64_t position) const {
  const ChunkShift::Extent whole = shift.whole_lines();
  const Chunk& chunk = viewer_.shown_chunk();
  if (position >= chunk.chunk_start && position <= chunk.file_location) {
    const int line = shift.nearest_line(position);
    const int page = face_.visible_lines();
    const bool below = whole.to_end || line + 2 * page <= whole.end;
    if (below && (whole.from_start || line >= whole.first + page)) return line;
  }
  int line = 0;
  shift.load_around(position, line);
  return line;
}

void ViewScroll::finish(ChunkShift& shift, int top) {
  if (shift.lost()) return;
  // A view longer than half a chunk may end after what the chunk can show.
  const ChunkShift::Extent whole = shift.whole_lines();
  if (!whole.to_end && top + face_.visible_lines() > whole.end) shift.load_below(top);
  shift.finish(top);
  show_position();
}

void ViewScroll::show_position() {
  if (!viewer_.shows_chunk()) return;
  const ChunkShift shift(viewer_, face_);
  face_.set_scroll_value(thumb_value(shift, face_.first_visible_line()));
}

/// Returns the thumb's value. Only the file's first and last page get the ends of the scroll bar.
int ViewScroll::thumb_value(const ChunkShift& shift, int top) const {
  const Chunk& chunk = viewer_.shown_chunk();
  if (chunk.chunk_start == 1 && top == 0) return 0;
  if (chunk.last_chunk && top >= last_top()) return scroll_maximum;
  const auto above = static_cast<double>(shift.line_position(top) - 1);
  const auto rest = static_cast<double>(viewer_.file_length() - shift.bytes_on_view(top));
  if (!(above < rest)) return scroll_maximum - 1;
  const auto value = static_cast<int>(std::lround(above / rest * scroll_maximum));
  return std::clamp(value, 1, scroll_maximum - 1);
}

}  // namespace tallowmere
