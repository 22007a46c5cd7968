#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <string>
#include <string_view>

// Non-owning wrappers of a form's controls. The form's window owns the controls; a wrapper is a
// handle with a type. Texts are UTF-8 and of any length.

namespace tallowmere::win32 {

/// Returns the place that a mouse message carries.
POINT point_of(LPARAM position);

class Control {
 public:
  Control() = default;
  explicit Control(HWND window) : window_(window) {}

  HWND handle() const { return window_; }
  int id() const { return GetDlgCtrlID(window_); }

  std::string text() const;
  std::wstring units() const;  ///< the text in UTF-16, as the system keeps it
  /// Sets the text. Does nothing when the control shows it already, which avoids a flicker.
  void set_text(std::string_view text) const;

  void enable(bool on) const { EnableWindow(window_, on); }
  bool enabled() const { return IsWindowEnabled(window_) != FALSE; }
  void show(bool on) const { ShowWindow(window_, on ? SW_SHOWNA : SW_HIDE); }
  /// True by the control's own state, also while its form is hidden.
  bool visible() const { return (GetWindowLongPtrW(window_, GWL_STYLE) & WS_VISIBLE) != 0; }
  /// Returns the upper left corner on the screen.
  POINT corner() const;
  bool covers(POINT on_screen) const;
  void focus() const { SetFocus(window_); }
  bool has_focus() const { return GetFocus() == window_; }
  void repaint() const { RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); }
  void set_font(HFONT font) const;
  /// Returns the font with which the control paints.
  HFONT font() const;

 protected:
  LRESULT send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
    return class_proc_ == nullptr ? SendMessageW(window_, message, wparam, lparam)
                                  : CallWindowProcW(class_proc_, window_, message, wparam, lparam);
  }
  /// Sends messages to the class's own procedure, past any subclass: that one can cost ten times as
  /// much as the answer.
  void send_to_class() {
    class_proc_ = reinterpret_cast<WNDPROC>(GetClassLongPtrW(window_, GCLP_WNDPROC));
  }

 private:
  HWND window_ = nullptr;
  WNDPROC class_proc_ = nullptr;  ///< null: the procedure that the window has now
};

class Label : public Control {
 public:
  using Control::Control;
};

class Button : public Control {
 public:
  using Control::Control;
  /// Acts as if the user clicked; runs the handler before it returns.
  void click() const { send(BM_CLICK); }
};

enum class Check { off = BST_UNCHECKED, on = BST_CHECKED, grayed = BST_INDETERMINATE };

class CheckBox : public Button {
 public:
  using Button::Button;
  bool checked() const { return state() == Check::on; }
  void set_checked(bool on) const { set_state(on ? Check::on : Check::off); }
  Check state() const { return static_cast<Check>(send(BM_GETCHECK)); }
  void set_state(Check state) const { send(BM_SETCHECK, static_cast<WPARAM>(state)); }
};

/// One button of a radio group.
class OptionButton : public Button {
 public:
  using Button::Button;
  bool selected() const { return send(BM_GETCHECK) == BST_CHECKED; }
  /// Selects only this button; the caller clears the others of its group.
  void set_selected(bool on) const { send(BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED); }
};

class TextBox : public Control {
 public:
  using Control::Control;
  /// Returns this box for many quick questions, which bypass any subclass.
  TextBox for_questions() const {
    TextBox box = *this;
    box.send_to_class();
    return box;
  }
  void set_limit(int characters) const { send(EM_SETLIMITTEXT, static_cast<WPARAM>(characters)); }
  /// Selects from `start` to before `end`, in UTF-16 units from 0.
  void select(int start, int end) const {
    send(EM_SETSEL, static_cast<WPARAM>(start), static_cast<LPARAM>(end));
  }
  void select_all() const { select(0, -1); }
  /// Sets the text of a multi-line box in UTF-16; the caret goes to its start.
  void set_units(const std::wstring& units) const { SetWindowTextW(handle(), units.c_str()); }
  /// Adds to the end of the text and leaves the caret there.
  void append_units(const std::wstring& units) const;
  // Lines of a multi-line box are those displayed, from 0.
  int line_count() const { return static_cast<int>(send(EM_GETLINECOUNT)); }
  int line_from_char(int position) const {
    return static_cast<int>(send(EM_LINEFROMCHAR, static_cast<WPARAM>(position)));
  }
  /// Returns the first unit of a line; -1 without such a line. Line -1 is the one with the caret.
  int line_index(int line) const {
    return static_cast<int>(send(EM_LINEINDEX, static_cast<WPARAM>(line)));
  }
  int first_visible_line() const { return static_cast<int>(send(EM_GETFIRSTVISIBLELINE)); }
  void scroll_lines(int lines) const { send(EM_LINESCROLL, 0, lines); }
  /// Returns the height of a line in pixels, measured with the box's font.
  int line_height() const;
  /// Returns the part of the box that the text may use; text_height() is its height in pixels.
  RECT text_area() const;
  int text_height() const;
  /// Returns the upper left corner of a unit; nothing after the last one.
  std::optional<POINT> character_place(int position) const;
  /// Returns the units of a line without its line break; line_length() counts them.
  std::wstring line_units(int line) const;
  int line_length(int line) const {
    return static_cast<int>(send(EM_LINELENGTH, static_cast<WPARAM>(line_index(line))));
  }
  /// Returns where the selection begins on the screen; the box's corner when that is not on view.
  POINT caret_point() const;
  int selection_start() const;
  int selection_length() const;
  /// Replaces the selected text by `text`, or inserts it at the caret; can be undone.
  void replace_selection(std::string_view text) const;
};

class ListBox : public Control {
 public:
  using Control::Control;
  int count() const { return static_cast<int>(send(LB_GETCOUNT)); }
  void clear() const { send(LB_RESETCONTENT); }
  /// Adds a row and returns its index.
  int add(std::string_view text) const;
  std::string row_text(int index) const;
  /// Returns the selected row; -1 without one.
  int selected() const { return static_cast<int>(send(LB_GETCURSEL)); }
  void select(int index) const { send(LB_SETCURSEL, static_cast<WPARAM>(index)); }
  void set_top(int index) const { send(LB_SETTOPINDEX, static_cast<WPARAM>(index)); }
  /// Stops painting (off) while many rows are added; turning it on again repaints.
  void set_redraw(bool on) const;
  void set_row_height(int pixels) const { send(LB_SETITEMHEIGHT, 0, pixels); }
};

class ComboBox : public Control {
 public:
  using Control::Control;
  int count() const { return static_cast<int>(send(CB_GETCOUNT)); }
  void clear() const { send(CB_RESETCONTENT); }
  int add(std::string_view text) const;
  std::string row_text(int index) const;
  int selected() const { return static_cast<int>(send(CB_GETCURSEL)); }
  void select(int index) const { send(CB_SETCURSEL, static_cast<WPARAM>(index)); }
};

/// A scroll bar control; its messages come to the form as WM_VSCROLL.
class ScrollBar : public Control {
 public:
  using Control::Control;
  /// Lets the thumb reach all positions from 0 to `maximum`, whatever its length: `page` is to the
  /// thumb what maximum + page is to the bar.
  void set_range(int maximum, int page) const;
  int position() const { return info(SIF_POS).nPos; }
  void set_position(int position) const;
  /// Returns where the thumb is being dragged to. The messages themselves carry only 16 bits.
  int track_position() const { return info(SIF_TRACKPOS).nTrackPos; }

 private:
  SCROLLINFO info(UINT what) const;
};

/// The pair of arrows beside a number field.
class UpDown : public Control {
 public:
  using Control::Control;
  void set_range(int first, int last) const {
    send(UDM_SETRANGE32, static_cast<WPARAM>(first), last);
  }
  int position() const { return static_cast<int>(send(UDM_GETPOS32)); }
  void set_position(int position) const { send(UDM_SETPOS32, 0, position); }
};

}  // namespace tallowmere::win32
