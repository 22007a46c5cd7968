#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <string_view>

namespace tallowmere::win32 {

/// The tool tips of one form. Owns the tip window and the texts, to which the window only points.
class ToolTip {
 public:
  explicit ToolTip(HWND form);
  ~ToolTip();
  ToolTip(const ToolTip&) = delete;
  ToolTip& operator=(const ToolTip&) = delete;

  /// Fits the width of the tips to the form's DPI; to be called again when that changes.
  void fit() const;
  /// Sets the tip that shows while the mouse rests over `control`; an empty text removes it. A
  /// label needs the style SS_NOTIFY to have one.
  void set(HWND control, std::string_view text);
  /// Sets the area of the form, in its client coordinates, that has one more tip; replaces the area
  /// so far. TTN_GETDISPINFO asks the form for the text when the tip is to show.
  void set_area(const RECT& area);
  void clear_area();
  bool has_sent(const NMHDR& header) const { return header.hwndFrom == window_; }
  /// Returns the tip of `control`; empty when it has none.
  std::string text(HWND control) const;

 private:
  HWND form_;
  HWND window_;
  std::map<HWND, std::wstring> texts_;
};

}  // namespace tallowmere::win32
