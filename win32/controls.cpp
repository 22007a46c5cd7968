#include "win32/controls.h"

#include <algorithm>

#include "win32/text.h"

namespace tallowmere::win32 {

namespace {

LPARAM pointer(const std::wstring& text) {
  return reinterpret_cast<LPARAM>(text.c_str());
}

/// Reads a row of a list box or combo box by its two messages.
std::string list_text(HWND list, UINT length_message, UINT text_message, int index) {
  const LRESULT length = SendMessageW(list, length_message, static_cast<WPARAM>(index), 0);
  if (length <= 0) return {};
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  SendMessageW(list, text_message, static_cast<WPARAM>(index),
               reinterpret_cast<LPARAM>(text.data()));
  return narrow(text);
}

}  // namespace

POINT point_of(LPARAM position) {
  return {static_cast<short>(LOWORD(position)), static_cast<short>(HIWORD(position))};
}

POINT Control::corner() const {
  RECT rect{};
  GetWindowRect(window_, &rect);
  return {rect.left, rect.top};
}

bool Control::covers(POINT on_screen) const {
  RECT rect{};
  GetWindowRect(window_, &rect);
  return PtInRect(&rect, on_screen) != FALSE;
}

std::string Control::text() const {
  return narrow(units());
}

std::wstring Control::units() const {
  const int length = GetWindowTextLengthW(window_);
  if (length <= 0) return {};
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window_, text.data(), length + 1)));
  return text;
}

void Control::set_text(std::string_view text) const {
  if (this->text() != text) SetWindowTextW(window_, wide(text).c_str());
}

void Control::set_font(HFONT font) const {
  send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

HFONT Control::font() const {
  const auto font = reinterpret_cast<HFONT>(send(WM_GETFONT));
  return font != nullptr ? font : static_cast<HFONT>(GetStockObject(SYSTEM_FONT));
}

POINT TextBox::caret_point() const {
  POINT point = character_place(selection_start()).value_or(POINT{0, 0});
  RECT area;
  GetClientRect(handle(), &area);
  if (!PtInRect(&area, point)) point = {0, 0};
  ClientToScreen(handle(), &point);
  return point;
}

int TextBox::selection_start() const {
  DWORD start = 0;
  send(EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
  return static_cast<int>(start);
}

int TextBox::selection_length() const {
  DWORD start = 0;
  DWORD end = 0;
  send(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  return static_cast<int>(end - start);
}

void TextBox::append_units(const std::wstring& units) const {
  const int end = GetWindowTextLengthW(handle());
  select(end, end);
  send(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(units.c_str()));
}

void TextBox::replace_selection(std::string_view text) const {
  send(EM_REPLACESEL, TRUE, pointer(wide(text)));
}

int TextBox::line_height() const {
  const HDC screen = GetDC(handle());
  const HGDIOBJ old_font = SelectObject(screen, font());
  TEXTMETRICW metrics{};
  GetTextMetricsW(screen, &metrics);
  SelectObject(screen, old_font);
  ReleaseDC(handle(), screen);
  return std::max(static_cast<int>(metrics.tmHeight), 1);
}

RECT TextBox::text_area() const {
  RECT place{};
  send(EM_GETRECT, 0, reinterpret_cast<LPARAM>(&place));
  return place;
}

int TextBox::text_height() const {
  const RECT place = text_area();
  return static_cast<int>(place.bottom - place.top);
}

std::optional<POINT> TextBox::character_place(int position) const {
  const LRESULT place = send(EM_POSFROMCHAR, static_cast<WPARAM>(position));
  if (place == -1) return std::nullopt;
  return POINT{static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
}

std::wstring TextBox::line_units(int line) const {
  std::wstring units(static_cast<std::size_t>(std::max(line_length(line), 1)), L'\0');
  units[0] = static_cast<wchar_t>(units.size());  // EM_GETLINE reads here how many fit
  units.resize(static_cast<std::size_t>(
      send(EM_GETLINE, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(units.data()))));
  return units;
}

int ListBox::add(std::string_view text) const {
  return static_cast<int>(send(LB_ADDSTRING, 0, pointer(wide(text))));
}

std::string ListBox::row_text(int index) const {
  return list_text(handle(), LB_GETTEXTLEN, LB_GETTEXT, index);
}

void ListBox::set_redraw(bool on) const {
  send(WM_SETREDRAW, on);
  if (on) InvalidateRect(handle(), nullptr, TRUE);
}

int ComboBox::add(std::string_view text) const {
  return static_cast<int>(send(CB_ADDSTRING, 0, pointer(wide(text))));
}

std::string ComboBox::row_text(int index) const {
  return list_text(handle(), CB_GETLBTEXTLEN, CB_GETLBTEXT, index);
}

void ScrollBar::set_range(int maximum, int page) const {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE;
  info.nMax = maximum + std::max(page, 1) - 1;
  info.nPage = static_cast<UINT>(std::max(page, 1));
  SetScrollInfo(handle(), SB_CTL, &info, TRUE);
}

void ScrollBar::set_position(int position) const {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_POS;
  info.nPos = position;
  SetScrollInfo(handle(), SB_CTL, &info, TRUE);
}

SCROLLINFO ScrollBar::info(UINT what) const {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = what;
  GetScrollInfo(handle(), SB_CTL, &info);
  return info;
}

}  // namespace tallowmere::win32
