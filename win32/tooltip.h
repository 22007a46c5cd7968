#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <string_view>

namespace tallowmere::win32 {

/// The tool tips of one form. Owns the tip window and the texts, which the window only points to.
class ToolTip {
 public:
  explicit ToolTip(HWND form);
  ~ToolTip();
  ToolTip(const ToolTip&) = delete;
  ToolTip& operator=(const ToolTip&) = delete;

  /// Fits the width of the tips to the form's DPI; again when that changes.
  void fit() const;
  /// Tip shown while the mouse rests over `control`; an empty text takes it away. A label needs
  /// the style SS_NOTIFY to have one.
  void set(HWND control, std::string_view text);
  /// The form has another tip for this area of it, in its client coordinates, instead of the one
  /// so far. The form is asked for the text by TTN_GETDISPINFO when the tip is to show.
  void set_area(const RECT& area);
  void clear_area();
  bool has_sent(const NMHDR& header) const { return header.hwndFrom == window_; }
  /// The tip of `control`, empty when it has none.
  std::string text(HWND control) const;

 private:
  HWND form_;
  HWND window_;
  std::map<HWND, std::wstring> texts_;
};

}  // namespace tallowmere::win32
