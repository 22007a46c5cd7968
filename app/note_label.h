#pragma once

#include <windows.h>

#include <string>

#include "shell/geometry.h"
#include "shell/window_note.h"
#include "win32/controls.h"
#include "win32/tooltip.h"

namespace tallowmere {

/// `lblNote`: a note at the right end of the row of file information, with a link that the mouse
/// and the Tab key reach. Takes no more room than it needs, the file information has the rest.
/// Where both do not fit, only the link shows, and the whole note as its tip.
class NoteLabel : public win32::Control {
 public:
  /// `window` is a SysLink control. The others outlive the label.
  NoteLabel(HWND window, const win32::Label& lblFileInfo, win32::ToolTip& tips);

  /// Again whenever the note or the file information may have changed. While its link is not
  /// `usable`, it is grey.
  void show(const Note& note, bool usable);

  /// Places both labels; again when the window's size or DPI has changed.
  void place(const TwipRect& row, int dpi);

 private:
  void fit();
  int try_text(const std::string& markup);
  void enable_link() const;

  const win32::Label& lblFileInfo_;
  win32::ToolTip& tips_;
  Note note_;
  bool usable_ = true;
  int info_width_ = 0;  ///< pixels that the file information takes
  RECT row_{};          ///< in pixels
  int gap_ = 0;         ///< pixels between both
};

}  // namespace tallowmere
