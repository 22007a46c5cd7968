#include "dialogs/option_label.h"

#include <commctrl.h>

#include <algorithm>
#include <string>

namespace tallowmere {

void OptionLabel::attach(HWND label, HWND option) {
  Label::operator=(Label(label));
  option_ = option;
  const auto self = reinterpret_cast<DWORD_PTR>(this);
  SetWindowSubclass(label, &OptionLabel::label_proc, 0, self);
  SetWindowSubclass(option, &OptionLabel::option_proc, 0, self);
}

OptionLabel::~OptionLabel() {
  if (option_ == nullptr) return;
  RemoveWindowSubclass(handle(), &OptionLabel::label_proc, 0);
  RemoveWindowSubclass(option_, &OptionLabel::option_proc, 0);
}

LRESULT CALLBACK OptionLabel::label_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                         UINT_PTR, DWORD_PTR label) {
  if (message != WM_PAINT || wparam != 0) return DefSubclassProc(window, message, wparam, lparam);
  // Both with one canvas: the frame inverts what lies below it, so that it must be drawn exactly
  // where the label has just been.
  PAINTSTRUCT area;
  const HDC canvas = BeginPaint(window, &area);
  DefSubclassProc(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas), PRF_CLIENT);
  reinterpret_cast<const OptionLabel*>(label)->draw_focus(canvas);
  EndPaint(window, &area);
  return 0;
}

LRESULT CALLBACK OptionLabel::option_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                          UINT_PTR, DWORD_PTR label) {
  const LRESULT result = DefSubclassProc(window, message, wparam, lparam);
  if (message == WM_SETFOCUS || message == WM_KILLFOCUS || message == WM_UPDATEUISTATE) {
    InvalidateRect(reinterpret_cast<const OptionLabel*>(label)->handle(), nullptr, TRUE);
  }
  return result;
}

void OptionLabel::draw_focus(HDC canvas) const {
  if (GetFocus() != option_) return;
  if ((SendMessageW(option_, WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS) != 0) return;
  RECT client;
  GetClientRect(handle(), &client);
  const int saved = SaveDC(canvas);
  SelectObject(canvas, reinterpret_cast<HFONT>(send(WM_GETFONT)));
  SIZE text;
  const std::wstring caption = units();
  GetTextExtentPoint32W(canvas, caption.c_str(), static_cast<int>(caption.size()), &text);
  client.right = std::min(client.right, text.cx + 1);
  SetTextColor(canvas, GetSysColor(COLOR_BTNTEXT));  // of the dots
  SetBkColor(canvas, GetSysColor(COLOR_BTNFACE));
  DrawFocusRect(canvas, &client);
  RestoreDC(canvas, saved);
}

}  // namespace tallowmere
