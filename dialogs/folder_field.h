#pragma once

#include <windows.h>

#include <string>

#include "win32/controls.h"

namespace tallowmere {

/// `cboFolder`: a box for the path of a folder, which the system completes while it is typed.
class FolderField : public win32::ComboBox {
 public:
  /// COM has been entered on this thread, for the completion.
  void attach(HWND combo);

  /// Shows the path of the folder that is open.
  void show(const std::string& path);
  /// The text is another one than was shown last: typed or chosen, and not yet opened.
  bool changed() const { return text() != shown_; }
  /// The list of folders is open.
  bool open() const { return send(CB_GETDROPPEDSTATE) != FALSE; }
  /// The part to type into, which takes the focus. By way of the whole, its loss would be reported.
  const win32::TextBox& box() const { return box_; }

 private:
  win32::TextBox box_;
  std::string shown_;
};

}  // namespace tallowmere
