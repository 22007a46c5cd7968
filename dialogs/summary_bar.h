#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "win32/controls.h"

namespace tallowmere {

/// A status bar of one-line summaries. A panel too narrow for its text shows it with an ellipsis,
/// that of a folder in the middle of the path; the panel's text and its tool tip stay whole.
class SummaryBar : public win32::Control {
 public:
  SummaryBar() = default;
  ~SummaryBar();
  SummaryBar(const SummaryBar&) = delete;
  SummaryBar& operator=(const SummaryBar&) = delete;
  /// `path_part` is the panel that shows a folder. This object must not move while it holds the
  /// bar.
  void attach(HWND bar, int path_part);

  void set_part(int part, std::string_view text) const;

 private:
  static LRESULT CALLBACK bar_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                   UINT_PTR id, DWORD_PTR bar);
  void draw(HDC canvas) const;
  void draw_text(HDC canvas, int part, RECT area) const;

  int path_part_ = -1;
};

/// The summary of a folder, its path with "\" and "+", in at most `width` pixels of the canvas's
/// font: in the middle of the path an ellipsis replaces what has no room.
std::wstring shortened_folder(HDC canvas, const std::wstring& summary, int width);

}  // namespace tallowmere
