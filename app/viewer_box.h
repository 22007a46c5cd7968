#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <string_view>

#include "app/mark_painter.h"
#include "engine/code_page.h"
#include "viewer/viewer_host.h"
#include "win32/controls.h"

namespace tallowmere {

/// Turns movements of a mouse wheel into whole steps. Fine wheels send fractions of a notch.
class WheelSteps {
 public:
  /// The steps to make now, `per_notch` for a whole notch; the rest is kept for the next movement.
  int add(int delta, int per_notch);

 private:
  int rest_ = 0;
};

/// The viewer's text box with the scroll bar beside it. Shows one character for each byte, or a
/// text in UTF-16, in which the user selects no half of a pair; nothing the user or another program
/// does in it changes its text. The form owns both windows.
class ViewerBox : public TextFace, public win32::TextBox {
 public:
  /// `page` must outlive the box.
  ViewerBox(HWND text_box, HWND scroll_bar, const CodePage& page);
  ~ViewerBox() override;
  ViewerBox(const ViewerBox&) = delete;
  ViewerBox& operator=(const ViewerBox&) = delete;

  /// Answers WM_CTLCOLORSTATIC of a control of the form; false for another one. A text box that
  /// cannot be written to is grey otherwise.
  bool choose_colors(HWND control, WPARAM canvas, LRESULT& brush) const;

  void set_text(std::string_view bytes) override;
  void set_text(std::u16string_view units) override;
  TextSelection selection() const override;
  /// A negative length puts the caret before the anchor `start`.
  void select(int start, int length) override;
  int line_count() const override { return quick_.line_count(); }
  int line_from_char(int position) const override { return quick_.line_from_char(position); }
  int line_index(int line) const override { return quick_.line_index(line); }
  int visible_lines() const override;
  int first_visible_line() const override { return quick_.first_visible_line(); }
  void set_first_visible_line(int line) override;
  void set_redraw(bool on) override;
  void enable(bool on) override;
  bool enabled() const override { return TextBox::enabled(); }
  void set_scroll_value(int value) override;

  /// True when the caret is at the start of the selection, which was extended upwards.
  bool caret_first() const;

  // The form sets these; each may be empty.
  /// The box is about to be disabled: its focus has to go on first.
  std::function<void()> before_disable;
  std::function<void(int lines)> wheel;           ///< lines to scroll, down when positive
  std::function<void(bool larger)> wheel_zoomed;  ///< the wheel was turned with Ctrl
  /// Called before a key moves the caret in this direction, by up to a page.
  std::function<void(bool down, bool caret_first)> before_key;
  /// Called before Ctrl+Home and Ctrl+End; with Shift the text box then extends the selection.
  std::function<void(bool to_end, bool extend)> before_jump;
  /// The user may have changed the selection: a key was released, or the mouse button.
  std::function<void()> selection_changed;
  /// The box has scrolled by itself to keep the caret on view.
  std::function<void()> view_moved;
  /// What to mark of the text on view, asked whenever the box paints.
  MarkPainter::Marks marks;
  void repaint_marks() const { InvalidateRect(handle(), nullptr, FALSE); }

  win32::ScrollBar VScroll1;

 private:
  static LRESULT CALLBACK subclass_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                        UINT_PTR id, DWORD_PTR box);
  LRESULT handle_message(UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT pass_on(UINT message, WPARAM wparam, LPARAM lparam);
  void fill(const std::wstring& units);
  LRESULT refill_around(const std::function<LRESULT()>& change);
  void paint();
  void repaint_selection(const TextSelection& before) const;
  void key_down(WPARAM key);
  void take_whole_pairs(bool down);
  void turn_wheel(WPARAM wparam);

  const TextBox quick_{for_questions()};
  const CodePage& page_;
  int redraw_held_ = 0;
  mutable int line_height_ = 0;  ///< 0: to be measured
  bool has_long_lines_ = false;  ///< of which the text box is slow to take many at once
  bool has_pairs_ = false;       ///< characters that take two units
  bool filling_ = false;
  WheelSteps lines_;
  WheelSteps zooms_;
  const MarkPainter painter_{quick_};
};

}  // namespace tallowmere
