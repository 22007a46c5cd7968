#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tallowmere::driver {

/// A program that takes longer hangs, even on the slowest machine.
inline constexpr int hang_ms = 60'000;

/// Checks every few milliseconds until `done` is true; false when that takes too long.
bool wait_until(const std::function<bool()>& done, int milliseconds = hang_ms);

/// Presses a key on the keyboard, together with a modifier key unless that is 0; it goes to the
/// window in front.
void press_key(WORD virtual_key, WORD modifier = 0);

/// Returns the text on the clipboard; empty when there is none.
std::string clipboard_text();

/// A window or a control of another process. Does not own it.
class Window {
 public:
  explicit Window(HWND handle = nullptr) : handle_(handle) {}

  HWND handle() const { return handle_; }
  explicit operator bool() const { return handle_ != nullptr; }

  /// Returns the control with this number; a null window when there is none.
  Window child(int id) const;
  /// Returns the first control of this class below this window.
  Window child_of_class(std::wstring_view name) const;

  bool is_visible() const { return IsWindowVisible(handle_) != 0; }
  bool is_enabled() const { return IsWindowEnabled(handle_) != 0; }
  bool is_checked() const { return check_state() == BST_CHECKED; }
  int check_state() const;
  RECT rectangle() const;  ///< on the screen, in pixels

  std::string text() const;
  void set_text(std::string_view text) const;

  /// Clicks a button. Returns at once: the handler may open a dialog.
  void click() const;
  /// Sends a menu command to a window. Returns at once.
  void command(int id) const;
  /// Presses and releases a key in a control. Returns at once.
  void key(WORD virtual_key) const;
  /// Brings a top-level window to the front, where it gets the keyboard.
  bool bring_to_front() const;
  bool has_focus(Window control) const;
  /// True while a menu of the window's thread is open.
  bool shows_menu() const;
  /// Asks for the pop-up menu of one of this window's controls, as the menu key does. Returns at
  /// once.
  void ask_for_menu(Window control) const;
  /// Asks the window to close. Returns at once.
  void close() const;

  /// Returns the texts of a list box; combo_box_texts(): those of a combo box's list.
  std::vector<std::string> list_box_texts() const;
  std::vector<std::string> combo_box_texts() const;
  /// Makes an entry of a list box the current one and double clicks it.
  void open_list_box_entry(int index) const;

  /// Returns the selected text of a text box; selection_start() is where it begins.
  std::string selected_text() const;
  int selection_start() const;
  /// Selects in a text box as a user does with the mouse. Returns when the box has noticed it.
  void select_text(int start, int length) const;
  /// Counts the lines of a text box above its first visible one.
  int first_visible_line() const;

  /// Returns the texts of a status bar's panels.
  std::vector<std::string> panel_texts() const;

 private:
  HWND handle_;
};

}  // namespace tallowmere::driver
