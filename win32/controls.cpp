#include "win32/controls.h"

#include "win32/text.h"

namespace tallowmere::win32 {

namespace {

LPARAM pointer(const std::wstring& text) {
  return reinterpret_cast<LPARAM>(text.c_str());
}

/// A row of a list box or combo box by its two messages.
std::string list_text(HWND list, UINT length_message, UINT text_message, int index) {
  const LRESULT length = SendMessageW(list, length_message, static_cast<WPARAM>(index), 0);
  if (length <= 0) return {};
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  SendMessageW(list, text_message, static_cast<WPARAM>(index),
               reinterpret_cast<LPARAM>(text.data()));
  return narrow(text);
}

}  // namespace

std::string Control::text() const {
  const int length = GetWindowTextLengthW(window_);
  if (length <= 0) return {};
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window_, text.data(), length + 1)));
  return narrow(text);
}

void Control::set_text(std::string_view text) const {
  if (this->text() != text) SetWindowTextW(window_, wide(text).c_str());
}

void Control::set_font(HFONT font) const {
  send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
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

void TextBox::replace_selection(std::string_view text) const {
  send(EM_REPLACESEL, TRUE, pointer(wide(text)));
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

void StatusBar::set_part(int part, std::string_view text) const {
  send(SB_SETTEXTW, static_cast<WPARAM>(part), pointer(wide(text)));
}

}  // namespace tallowmere::win32
