#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <string>
#include <string_view>

// Non-owning wrappers of a form's controls. The form's window owns the controls; a wrapper is a
// handle with a type. Texts are UTF-8 and of any length.

namespace tallowmere::win32 {

class Control {
 public:
  Control() = default;
  explicit Control(HWND window) : window_(window) {}

  HWND handle() const { return window_; }
  int id() const { return GetDlgCtrlID(window_); }

  std::string text() const;
  /// Does nothing when the control shows this text already, which saves a flicker.
  void set_text(std::string_view text) const;

  void enable(bool on) const { EnableWindow(window_, on); }
  bool enabled() const { return IsWindowEnabled(window_) != FALSE; }
  void show(bool on) const { ShowWindow(window_, on ? SW_SHOWNA : SW_HIDE); }
  /// The control's own state: true also while its form is hidden.
  bool visible() const { return (GetWindowLongPtrW(window_, GWL_STYLE) & WS_VISIBLE) != 0; }
  void focus() const { SetFocus(window_); }
  bool has_focus() const { return GetFocus() == window_; }
  void repaint() const { RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); }
  void set_font(HFONT font) const;

 protected:
  LRESULT send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
    return SendMessageW(window_, message, wparam, lparam);
  }

 private:
  HWND window_ = nullptr;
};

class Label : public Control {
 public:
  using Control::Control;
};

class Button : public Control {
 public:
  using Control::Control;
  /// As if the user clicked; runs the handler before it returns.
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
  /// Only this button; the caller clears the others of its group.
  void set_selected(bool on) const { send(BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED); }
};

class TextBox : public Control {
 public:
  using Control::Control;
  void set_limit(int characters) const { send(EM_SETLIMITTEXT, static_cast<WPARAM>(characters)); }
  /// In UTF-16 units from 0.
  void select(int start, int end) const {
    send(EM_SETSEL, static_cast<WPARAM>(start), static_cast<LPARAM>(end));
  }
  void select_all() const { select(0, -1); }
  int selection_start() const;
  int selection_length() const;
  /// The selected text, or what the insertion mark stands at, becomes `text`; can be undone.
  void replace_selection(std::string_view text) const;
};

class ListBox : public Control {
 public:
  using Control::Control;
  int count() const { return static_cast<int>(send(LB_GETCOUNT)); }
  void clear() const { send(LB_RESETCONTENT); }
  /// Returns the row's index.
  int add(std::string_view text) const;
  std::string row_text(int index) const;
  /// -1 when none is selected.
  int selected() const { return static_cast<int>(send(LB_GETCURSEL)); }
  void select(int index) const { send(LB_SETCURSEL, static_cast<WPARAM>(index)); }
  void set_top(int index) const { send(LB_SETTOPINDEX, static_cast<WPARAM>(index)); }
  /// Holds painting back while many rows are added; `on` again repaints.
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

class ScrollBar : public Control {
 public:
  using Control::Control;
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

class StatusBar : public Control {
 public:
  using Control::Control;
  void set_part(int part, std::string_view text) const;
};

}  // namespace tallowmere::win32
