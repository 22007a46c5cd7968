#include "win32/menu.h"

#include <string>

#include "win32/text.h"

namespace tallowmere::win32 {

PopupMenu::PopupMenu(int id) : menu_(LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id))) {}

PopupMenu::~PopupMenu() {
  if (menu_ != nullptr) DestroyMenu(menu_);
}

void pop_up(HMENU menu, HWND owner, POINT at) {
  TrackPopupMenuEx(menu, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RIGHTBUTTON, at.x, at.y, owner,
                   nullptr);
}

int choose_from(HMENU menu, HWND owner, POINT at) {
  return TrackPopupMenuEx(menu, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RIGHTBUTTON | TPM_RETURNCMD,
                          at.x, at.y, owner, nullptr);
}

void enable_entry(HMENU menu, int id, bool on) {
  EnableMenuItem(menu, static_cast<UINT>(id), on ? MF_ENABLED : MF_GRAYED);
}

void check_entry(HMENU menu, int id, bool on) {
  CheckMenuItem(menu, static_cast<UINT>(id), on ? MF_CHECKED : MF_UNCHECKED);
}

void set_entry_text(HMENU menu, int id, std::string_view text) {
  std::wstring units = wide(text);
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_STRING;
  info.dwTypeData = units.data();
  SetMenuItemInfoW(menu, static_cast<UINT>(id), FALSE, &info);
}

}  // namespace tallowmere::win32
