#include "viewer/chunk_shift.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "viewer/display_filter.h"

namespace tallowmere {

namespace {

/// Further loads to bring a line back to the beginning of a displayed line. Some text boxes take a
/// second for a chunk without line breaks.
constexpr int alignment_tries = 1;
/// Line breaks looked at before those of the present chunk, however long the view is.
constexpr int further_breaks = 100;

/// Finds the earliest beginning of a line in `raw` that lies before `limit` and is followed by
/// fewer than `breaks` line breaks; 0 when there is none. When `raw` begins the file, its beginning
/// is the earliest, unless too many line breaks follow.
template <class Text>
std::size_t earliest_line(const Text& raw, int breaks, std::size_t limit, bool begins_file) {
  std::size_t earliest = 0;
  for (std::size_t at = raw.size(); breaks > 0 && at-- > 1;) {
    if (!begins_line(raw, at)) continue;
    --breaks;
    if (at < limit) earliest = at;
  }
  return begins_file && breaks > 0 ? 0 : earliest;
}

}  // namespace

ChunkShift::ChunkShift(FileViewer& viewer, TextFace& face, bool caret_first)
    : viewer_(viewer), face_(face), step_(viewer), caret_first_(caret_first) {
  const TextSelection selection = face.selection();
  selection_start_ = position_at(selection.start);
  selection_end_ = position_at(selection.start + selection.length);
}

ChunkShift::~ChunkShift() {
  if (loaded_) face_.set_redraw(true);
}

// A completed line break has two characters for one byte, and only one of them leads back to it. So
// the position before a line break is that of its LF.
std::int64_t ChunkShift::position_at(int character) const {
  return chunk().file_position(chunk().is_break(character) ? character + 1 : character);
}

int ChunkShift::character_at(std::int64_t position) const {
  const int character = chunk().character_at(position);
  return chunk().is_break(character - 1) ? character - 1 : character;
}

ChunkShift::Extent ChunkShift::whole_lines() const {
  Extent extent;
  extent.from_start = chunk().chunk_start == 1;
  extent.to_end = chunk().last_chunk;
  const int lines = face_.line_count();
  extent.end = extent.to_end ? lines : line_at(chunk().crowded_from);
  if (extent.from_start) return extent;
  // The first line break mends whatever the seam has done, unless it is far away.
  const int first_break = chunk().first_break();
  extent.first = 1;
  if (first_break >= 0) {
    const int first = face_.line_from_char(first_break) + 1;
    if (first <= lines / 4) extent.first = first;
  }
  return extent;
}

bool ChunkShift::load_below(int& line) {
  const std::int64_t old_start = chunk().chunk_start;
  const std::int64_t position = line_position(line);
  // For an empty line, the byte before it will do as well.
  const auto start_at = [&](int at) { return chunk().file_position(face_.line_index(at)); };
  std::int64_t start = start_at(start_line_above(line));
  if (start <= old_start) start = start_at(line);
  if (start <= old_start || chunk().last_chunk) return false;
  return load(start, position, line);
}

bool ChunkShift::load_above(int& line) {
  const std::int64_t old_start = chunk().chunk_start;
  if (old_start == 1) return false;
  const std::int64_t position = line_position(line);
  // However long the view is, the chunk has to go on before the present one.
  const std::int64_t room = std::max(room_above(line), position - old_start + chunk_length / 4);
  const int breaks = std::max(lines_above(), line + further_breaks);
  std::int64_t start = start_above(position, room, breaks, old_start);
  if (start == 0) {
    const bool wraps = line + 1 < face_.line_count();
    const std::int64_t line_length = wraps ? line_position(line + 1) - position : 1;
    start = position - std::max<std::int64_t>(room / line_length, 1) * line_length;
    start = std::max<std::int64_t>(std::min(start, old_start - 1), 1);
  }
  return load(start, position, line);
}

bool ChunkShift::load_around(std::int64_t position, int& line) {
  const std::int64_t room = room_above(face_.first_visible_line());
  std::int64_t start = start_above(position, room, lines_above(), position);
  if (start == 0) start = std::max<std::int64_t>(position - room, 1);
  if (!load_chunk(start, position)) return false;
  line = nearest_line(position);
  return true;
}

bool ChunkShift::load_start() {
  return chunk().chunk_start == 1 || load_chunk(1, 1);
}

bool ChunkShift::load_end() {
  const std::int64_t start = std::max<std::int64_t>(viewer_.file_length() - chunk_length + 1, 1);
  return chunk().last_chunk || load_chunk(start, start);
}

// A text without line breaks wraps as before only when the chunk begins at a line's beginning. In
// the file's last chunk, which has its fixed place, the view may be off by part of a line.
bool ChunkShift::load(std::int64_t start, std::int64_t position, int& line) {
  const std::int64_t old_start = chunk().chunk_start;
  for (int tries = 0;; ++tries) {
    if (!load_chunk(start, position)) return false;
    line = line_at(position);
    const std::int64_t off = position - line_position(line);
    if (off == 0 || tries == alignment_tries || start == 1 || chunk().last_chunk) break;
    if (start < old_start && start + off >= old_start) break;
    start += off;
  }
  return true;
}

bool ChunkShift::load_chunk(std::int64_t start, std::int64_t position) {
  if (!loaded_) face_.set_redraw(false);
  loaded_ = true;
  std::int64_t in_chunk = std::max<std::int64_t>(position - start + 1, 1);
  int line = 0;
  lost_ = viewer_.load_text_chunk(start, in_chunk, line) != ChunkResult::ok;
  return !lost_;
}

int ChunkShift::nearest_line(std::int64_t position) const {
  const int line = line_at(position);
  if (line + 1 >= face_.line_count()) return line;
  return line_position(line + 1) - position < position - line_position(line) ? line + 1 : line;
}

std::int64_t ChunkShift::bytes_on_view(int line) const {
  const int end = line + face_.visible_lines();
  const std::int64_t end_position =
      end < face_.line_count() ? line_position(end) : chunk().file_location + 1;
  return end_position - line_position(line);
}

/// Returns how many bytes a new chunk can hold above a view and still go on for two pages after it.
std::int64_t ChunkShift::room_above(int line) const {
  return std::clamp<std::int64_t>(chunk_length - 3 * bytes_on_view(line), 0, chunk_length / 2);
}

/// Returns how many line breaks it can hold there; a chunk completes only so many.
int ChunkShift::lines_above() const {
  return std::max((inserted_breaks_limit - 3 * face_.visible_lines()) / 2, 0);
}

/// Returns the line of the present chunk with which a chunk that goes on further down can begin.
int ChunkShift::start_line_above(int line) const {
  const std::int64_t earliest = line_position(line) - room_above(line);
  int first = line_at(earliest);
  if (line_position(first) < earliest) ++first;
  return std::clamp(first, std::max(line - lines_above(), 0), line);
}

/// Finds where a chunk can begin so that the line at `position` wraps in it as it does now: after a
/// line break before `before`, at most `room` bytes and `breaks` line breaks above; 0: nowhere.
std::int64_t ChunkShift::start_above(std::int64_t position, std::int64_t room, int breaks,
                                     std::int64_t before) {
  const std::int64_t earliest = std::max<std::int64_t>(position - room, 1);
  const auto limit = static_cast<std::size_t>(std::max<std::int64_t>(before - earliest, 0));
  const bool from_start = earliest == 1;
  std::size_t start = 0;
  if (chunk().is_unicode()) {
    const UnitText text = viewer_.read_units(earliest, position - earliest);
    const auto units = std::ranges::lower_bound(text.origin, static_cast<std::int32_t>(limit));
    start = earliest_line(text.units, breaks, static_cast<std::size_t>(units - text.origin.begin()),
                          from_start);
    if (start > 0) start = static_cast<std::size_t>(text.origin[start]);
  } else {
    const std::string raw = viewer_.read_window(earliest, position - earliest);
    start = earliest_line(raw, breaks, limit, from_start);
  }
  return start > 0 || from_start ? earliest + static_cast<std::int64_t>(start) : 0;
}

void ChunkShift::finish(int top) {
  if (lost_) return;
  top = std::clamp(top, 0, face_.line_count() - 1);
  if (loaded_) restore_selection(top);
  face_.set_first_visible_line(top);
}

void ChunkShift::restore_selection(int top) {
  const std::int64_t first = std::max(selection_start_, chunk().chunk_start);
  const std::int64_t last = std::min(selection_end_, chunk().file_location + 1);
  const bool selected = selection_start_ < selection_end_;
  if (last < first || (selected && last == first)) {
    face_.select(face_.line_index(top), 0);
    return;
  }
  const int start = character_at(first);
  const int end = character_at(last);
  if (caret_first_) {
    face_.select(end, start - end);
  } else {
    face_.select(start, end - start);
  }
}

}  // namespace tallowmere
