#include "win32/tooltip.h"

#include <commctrl.h>

#include "win32/dpi.h"
#include "win32/text.h"

namespace tallowmere::win32 {

namespace {

constexpr int longest_delay = 32767;  // milliseconds
constexpr int widest_tip = 480;       // pixels at 96 dots per inch; longer lines are wrapped

TOOLINFOW tool_info(HWND form, HWND control) {
  TOOLINFOW info{};
  info.cbSize = TTTOOLINFOW_V2_SIZE;
  info.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  info.hwnd = form;
  info.uId = reinterpret_cast<UINT_PTR>(control);
  return info;
}

TOOLINFOW area_info(HWND form) {
  TOOLINFOW info{};
  info.cbSize = TTTOOLINFOW_V2_SIZE;
  info.uFlags = TTF_SUBCLASS;
  info.hwnd = form;
  info.uId = 1;
  return info;
}

}  // namespace

ToolTip::ToolTip(HWND form)
    : form_(form),
      window_(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                              WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0, 0, 0, 0, form, nullptr,
                              GetModuleHandleW(nullptr), nullptr)) {
  fit();
  // A tip may be long, so it stays until the mouse leaves; the system takes no longer delay.
  SendMessageW(window_, TTM_SETDELAYTIME, TTDT_AUTOPOP, longest_delay);
}

void ToolTip::fit() const {
  SendMessageW(window_, TTM_SETMAXTIPWIDTH, 0, scale(widest_tip, window_dpi(form_)));
}

ToolTip::~ToolTip() {
  if (IsWindow(window_)) DestroyWindow(window_);
}

void ToolTip::set(HWND control, std::string_view text) {
  TOOLINFOW info = tool_info(form_, control);
  const bool known = texts_.count(control) != 0;
  if (text.empty()) {
    if (known) SendMessageW(window_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&info));
    texts_.erase(control);
    return;
  }
  texts_[control] = wide(text);
  info.lpszText = texts_[control].data();
  SendMessageW(window_, known ? TTM_UPDATETIPTEXTW : TTM_ADDTOOLW, 0,
               reinterpret_cast<LPARAM>(&info));
}

/// Fits the width each time, since nothing reports when the form comes to a screen of another DPI.
void ToolTip::set_area(const RECT& area) {
  clear_area();
  fit();
  TOOLINFOW info = area_info(form_);
  info.rect = area;
  info.lpszText = LPSTR_TEXTCALLBACKW;
  SendMessageW(window_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
  // The mouse may rest there already, and the tip window has missed its movement.
  POINT at;
  GetCursorPos(&at);
  ScreenToClient(form_, &at);
  MSG moved{form_, WM_MOUSEMOVE, 0, MAKELPARAM(at.x, at.y), 0, {}};
  SendMessageW(window_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&moved));
}

void ToolTip::clear_area() {
  TOOLINFOW info = area_info(form_);
  SendMessageW(window_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&info));
}

std::string ToolTip::text(HWND control) const {
  const auto found = texts_.find(control);
  return found == texts_.end() ? std::string() : narrow(found->second);
}

}  // namespace tallowmere::win32
