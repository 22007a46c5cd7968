#pragma once

#include <windows.h>

#include "win32/controls.h"

namespace tallowmere {

/// The caption of an option button that has no room for its own: a label that shows the button's
/// focus around its text.
class OptionLabel : public win32::Label {
 public:
  OptionLabel() = default;
  ~OptionLabel();
  OptionLabel(const OptionLabel&) = delete;
  OptionLabel& operator=(const OptionLabel&) = delete;
  /// Takes hold of the windows; this object must not move while it holds them.
  void attach(HWND label, HWND option);

 private:
  static LRESULT CALLBACK label_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                     UINT_PTR id, DWORD_PTR label);
  static LRESULT CALLBACK option_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                      UINT_PTR id, DWORD_PTR label);
  void draw_focus(HDC canvas) const;

  HWND option_ = nullptr;
};

}  // namespace tallowmere
