#pragma once

#include <windows.h>

#include <string_view>

namespace tallowmere::win32 {

/// A menu from the program's resources that no window owns; destroyed with this object.
class PopupMenu {
 public:
  /// Loads the menu resource `id`; its first submenu is what pops up.
  explicit PopupMenu(int id);
  ~PopupMenu();
  PopupMenu(const PopupMenu&) = delete;
  PopupMenu& operator=(const PopupMenu&) = delete;

  HMENU handle() const { return GetSubMenu(menu_, 0); }

 private:
  HMENU menu_;
};

/// Shows `menu` at a place on the screen; `owner` gets the choice as WM_COMMAND. Returns when the
/// menu is closed, which is before the command is served.
void pop_up(HMENU menu, HWND owner, POINT at);

/// Shows `menu` likewise, but returns the entry chosen, 0 for none, and sends no command.
int choose_from(HMENU menu, HWND owner, POINT at);

void enable_entry(HMENU menu, int id, bool on);
void check_entry(HMENU menu, int id, bool on);
void set_entry_text(HMENU menu, int id, std::string_view text);

}  // namespace tallowmere::win32
