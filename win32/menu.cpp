#include "win32/menu.h"

#include <vector>

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

bool entry_enabled(HMENU menu, int id) {
  return (GetMenuState(menu, static_cast<UINT>(id), MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED)) == 0;
}

void check_entry(HMENU menu, int id, bool on) {
  CheckMenuItem(menu, static_cast<UINT>(id), on ? MF_CHECKED : MF_UNCHECKED);
}

bool entry_checked(HMENU menu, int id) {
  return (GetMenuState(menu, static_cast<UINT>(id), MF_BYCOMMAND) & MF_CHECKED) != 0;
}

void set_entry_text(HMENU menu, int id, std::string_view text) {
  std::wstring units = wide(text);
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_STRING;
  info.dwTypeData = units.data();
  SetMenuItemInfoW(menu, static_cast<UINT>(id), FALSE, &info);
}

std::string entry_text(HMENU menu, int id) {
  const UINT entry = static_cast<UINT>(id);
  const int length = GetMenuStringW(menu, entry, nullptr, 0, MF_BYCOMMAND);
  if (length <= 0) return {};
  std::vector<wchar_t> units(static_cast<std::size_t>(length) + 1);
  GetMenuStringW(menu, entry, units.data(), length + 1, MF_BYCOMMAND);
  return narrow(units.data());
}

}  // namespace tallowmere::win32
