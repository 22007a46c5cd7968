#pragma once

#include <windows.h>

#include "shell/spin_field.h"
#include "win32/controls.h"

namespace tallowmere {

/// A spin field of a dialog: a focusable box that shows a number (`Picture1` with its label and
/// the line that marks the focus) and the pair of arrows beside it (`VScroll1`).
///
/// The window's text is the number, for tests and assistive tools; setting the text to a number
/// sets the value. The form gets EN_CHANGE, EN_SETFOCUS and EN_KILLFOCUS by WM_COMMAND, the first
/// after each change of the value, whoever made it.
class SpinBox : public win32::Control {
 public:
  /// Registers the window class "SpinBox" and returns `template_id`: to be called before a dialog
  /// template that names the class becomes a window.
  static int prepare(int template_id);

  /// Takes hold of the windows; this object must not move while it holds them.
  SpinBox() = default;
  ~SpinBox();
  SpinBox(const SpinBox&) = delete;
  SpinBox& operator=(const SpinBox&) = delete;
  void attach(HWND box, HWND arrows, const SpinField& field);

  int value() const { return field_.value(); }
  void set_range(int min, int max);
  void set_value(int value);
  /// Moves the box, and the arrows to its right; in pixels of the form. Their old pixels are not
  /// copied: where several boxes change places, they would be those of a neighbour.
  void place(const RECT& area) const;
  /// Shows or hides box and arrows.
  void show_both(bool on) const;
  const win32::UpDown& arrows() const { return arrows_; }

  /// The form hands on UDN_DELTAPOS of the arrows. The answer refuses the arrows' own change.
  LRESULT VScroll1_Change(const NMHDR& header);

 private:
  static LRESULT CALLBACK box_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam);
  void Picture1_KeyDown(WPARAM key);
  void key_press(WPARAM character);
  void wheel(int delta);
  LRESULT take_text(const wchar_t* text);
  void place_arrows() const;
  void paint();
  void draw(HDC canvas, const RECT& area) const;
  /// Shows the field; reports to the form when its value is no longer `before`.
  void update(int before);
  void tell_form(int code) const;

  win32::UpDown arrows_;
  SpinField field_{0, 0, 0};
  HFONT font_ = nullptr;  ///< the form's
  int wheel_rest_ = 0;    ///< turning not yet worth a step
};

}  // namespace tallowmere
