#pragma once

#include <cstdint>

#include "viewer/chunk_shift.h"
#include "viewer/file_viewer.h"
#include "viewer/viewer_host.h"

namespace tallowmere {

/// Moves the view through the whole file and loads other chunks without a jump in what the user
/// sees. Called by the handlers of the scroll bar, the mouse wheel and the keys; does nothing while
/// no file is shown.
class ViewScroll {
 public:
  ViewScroll(FileViewer& viewer, TextFace& face) : viewer_(viewer), face_(face) {}

  /// Scrolls by displayed lines, down when positive.
  void scroll_lines(int lines);
  void scroll_pages(int pages);
  /// Scrolls to where the thumb was dragged, 0 to scroll_maximum.
  void scroll_to(int value);

  /// Goes to the file's first line with the caret (Ctrl+Home; go_to_end(): last line, Ctrl+End).
  /// With `extend` the selection stays, as far as it lies in the chunk, for the text box to extend.
  void go_to_start(bool extend);
  void go_to_end(bool extend);

  /// Makes sure that the chunk goes on beyond the caret in that direction (down: true), when the
  /// file does. Called before the text box handles a key that moves the caret by up to a page.
  /// `caret_first`: the caret is at the start of the selection.
  void make_room(bool down, bool caret_first);

  /// Sets the thumb for the present view; called when the text box has scrolled by itself.
  void show_position();

 private:
  int last_top() const;
  int move_down(ChunkShift& shift, int top, int lines) const;
  int move_up(ChunkShift& shift, int top, int lines) const;
  int go_to(ChunkShift& shift, std::int64_t position) const;
  void finish(ChunkShift& shift, int top);
  int thumb_value(const ChunkShift& shift, int top) const;

  FileViewer& viewer_;
  TextFace& face_;
};

}  // namespace tallowmere
