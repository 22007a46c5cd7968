#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>

#include "shell/geometry.h"
#include "shell/window_note.h"
#include "win32/controls.h"
#include "win32/tooltip.h"

namespace tallowmere {

/// `lblNote`: a note at the right end of the row of file information, with links that the mouse and
/// the Tab key reach. It takes no more room than it needs, the file information has the rest. Where
/// both do not fit, the links and the first texts show, and all texts are the label's tip.
class NoteLabel : public win32::Control {
 public:
  /// `window` is a SysLink control. The others outlive the label.
  NoteLabel(HWND window, const win32::Label& lblFileInfo, win32::ToolTip& tips);

  /// Shows the note; called again whenever it or the file information may have changed. Links that
  /// are not `usable` are grey.
  void show(const Note& note, bool usable);

  /// What the link does that was clicked or got Enter; nothing when the note no longer has it.
  std::optional<NoteLink> link_of(const NMHDR& notification) const;
  /// Whether the Tab key leads out of the label. Some systems' control keeps it among its links.
  bool tab_leaves(bool backwards) const;
  /// Acts as the Enter key: not every system's control takes the space bar.
  void press_link() const { send(WM_KEYDOWN, VK_RETURN, 1); }

  /// Places both labels; called again when the window's size or DPI has changed.
  void place(const TwipRect& row, int dpi);

 private:
  void fit();
  Note fitted(int room) const;
  int try_texts(const Note& note, std::size_t count);
  void enable_links() const;
  std::optional<NoteLink> focused_link() const;
  void focus_link(NoteLink focused) const;

  const win32::Label& lblFileInfo_;
  win32::ToolTip& tips_;
  Note note_;
  bool usable_ = true;
  int info_width_ = 0;  ///< pixels that the file information takes
  RECT row_{};          ///< in pixels
  int gap_ = 0;         ///< pixels between both
};

}  // namespace tallowmere
