#include "dialogs/spin_box.h"

#include <commctrl.h>
#include <uxtheme.h>
#include <vssym32.h>

#include <algorithm>
#include <cwchar>
#include <string>

#include "win32/dpi.h"
#include "win32/text.h"

namespace tallowmere {
namespace {

constexpr wchar_t class_name[] = L"SpinBox";
constexpr int arrows_width = 11;  ///< dialog units

/// The edge of a text box, in the look of the system.
void draw_edge(HWND window, HDC canvas, RECT area) {
  HTHEME theme = OpenThemeData(window, L"EDIT");
  if (theme == nullptr) {
    FillRect(canvas, &area, GetSysColorBrush(COLOR_WINDOW));
    DrawEdge(canvas, &area, EDGE_SUNKEN, BF_RECT);
    return;
  }
  const int state = !IsWindowEnabled(window) ? EPSN_DISABLED
                    : GetFocus() == window   ? EPSN_FOCUSED
                                             : EPSN_NORMAL;
  DrawThemeBackground(theme, canvas, EP_EDITBORDER_NOSCROLL, state, &area, nullptr);
  CloseThemeData(theme);
}

}  // namespace

int SpinBox::prepare(int template_id) {
  WNDCLASSEXW window_class{};
  window_class.cbSize = sizeof(window_class);
  window_class.style = CS_HREDRAW | CS_VREDRAW;
  window_class.lpfnWndProc = &SpinBox::box_proc;
  window_class.hInstance = GetModuleHandleW(nullptr);
  window_class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  window_class.lpszClassName = class_name;
  RegisterClassExW(&window_class);  // fails harmlessly from the second time on
  return template_id;
}

void SpinBox::attach(HWND box, HWND arrows, const SpinField& field) {
  Control::operator=(Control(box));
  arrows_ = win32::UpDown(arrows);
  field_ = field;
  font_ = reinterpret_cast<HFONT>(SendMessageW(GetParent(box), WM_GETFONT, 0, 0));
  SetWindowLongPtrW(box, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  place_arrows();
  set_range(field.min(), field.max());
}

void SpinBox::place_arrows() const {
  const HWND form = GetParent(handle());
  RECT width{0, 0, arrows_width, 0};
  MapDialogRect(form, &width);
  RECT box;
  GetWindowRect(handle(), &box);
  MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&box), 2);
  SetWindowPos(arrows_.handle(), nullptr, box.right, box.top, width.right, box.bottom - box.top,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

SpinBox::~SpinBox() {
  if (handle() != nullptr) SetWindowLongPtrW(handle(), GWLP_USERDATA, 0);
}

void SpinBox::set_range(int min, int max) {
  const int before = field_.value();
  field_.set_range(min, max);
  arrows_.set_range(min, max);
  update(before);
}

void SpinBox::set_value(int value) {
  const int before = field_.value();
  field_.set_value(value);
  update(before);
}

void SpinBox::place(const RECT& area) const {
  SetWindowPos(handle(), nullptr, area.left, area.top, area.right - area.left,
               area.bottom - area.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
  place_arrows();
}

void SpinBox::show_both(bool on) const {
  show(on);
  arrows_.show(on);
}

LRESULT SpinBox::VScroll1_Change(const NMHDR& header) {
  const auto& change = reinterpret_cast<const NMUPDOWN&>(header);
  const int before = field_.value();
  field_.arrow_click(change.iDelta > 0 ? 1 : -1);
  update(before);
  if (visible()) focus();
  return TRUE;
}

void SpinBox::update(int before) {
  const std::wstring text = win32::wide(field_.text());
  // Not by WM_SETTEXT, which is how others set the value.
  DefWindowProcW(handle(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
  InvalidateRect(handle(), nullptr, FALSE);
  arrows_.set_position(field_.value());
  if (field_.value() != before) tell_form(EN_CHANGE);
}

void SpinBox::tell_form(int code) const {
  SendMessageW(GetParent(handle()), WM_COMMAND, static_cast<WPARAM>(MAKELONG(id(), code)),
               reinterpret_cast<LPARAM>(handle()));
}

LRESULT CALLBACK SpinBox::box_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* box = reinterpret_cast<SpinBox*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (box == nullptr) return DefWindowProcW(window, message, wparam, lparam);
  return box->on_message(message, wparam, lparam);
}

LRESULT SpinBox::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_KEYDOWN:
      Picture1_KeyDown(wparam);
      return 0;
    case WM_CHAR:
      key_press(wparam);
      return 0;
    case WM_MOUSEWHEEL:
      wheel(GET_WHEEL_DELTA_WPARAM(wparam));
      return 0;
    case WM_LBUTTONDOWN:
      focus();
      return 0;
    case WM_SETFOCUS:
      InvalidateRect(handle(), nullptr, FALSE);
      tell_form(EN_SETFOCUS);
      return 0;
    case WM_KILLFOCUS: {
      const int before = field_.value();
      field_.leave();
      update(before);
      tell_form(EN_KILLFOCUS);
      return 0;
    }
    case WM_SETTEXT:
      return take_text(reinterpret_cast<const wchar_t*>(lparam));
    case WM_SETFONT:
      font_ = reinterpret_cast<HFONT>(wparam);
      InvalidateRect(handle(), nullptr, FALSE);
      return 0;
    case WM_GETFONT:
      return reinterpret_cast<LRESULT>(font_);
    case WM_ENABLE:
    case WM_THEMECHANGED:
      InvalidateRect(handle(), nullptr, FALSE);
      return 0;
    case WM_ERASEBKGND:
      return TRUE;
    case WM_PAINT:
      paint();
      return 0;
    default:
      return DefWindowProcW(handle(), message, wparam, lparam);
  }
}

void SpinBox::Picture1_KeyDown(WPARAM key) {
  const int before = field_.value();
  switch (key) {
    case VK_UP:
    case VK_RIGHT:
      field_.key(SpinKey::up);
      break;
    case VK_DOWN:
    case VK_LEFT:
      field_.key(SpinKey::down);
      break;
    case VK_PRIOR:
      field_.key(SpinKey::page_up);
      break;
    case VK_NEXT:
      field_.key(SpinKey::page_down);
      break;
    case VK_HOME:
      field_.key(SpinKey::home);
      break;
    case VK_END:
      field_.key(SpinKey::end);
      break;
    default:
      return;
  }
  update(before);
}

void SpinBox::key_press(WPARAM character) {
  const int before = field_.value();
  if (character >= L'0' && character <= L'9') {
    field_.digit(static_cast<int>(character - L'0'));
  } else if (character == VK_BACK) {
    field_.backspace();
  } else {
    return;
  }
  update(before);
}

void SpinBox::wheel(int delta) {
  const int before = field_.value();
  wheel_rest_ += delta;
  for (; wheel_rest_ >= WHEEL_DELTA; wheel_rest_ -= WHEEL_DELTA) field_.arrow_click(1);
  for (; wheel_rest_ <= -WHEEL_DELTA; wheel_rest_ += WHEEL_DELTA) field_.arrow_click(-1);
  update(before);
}

LRESULT SpinBox::take_text(const wchar_t* text) {
  if (text == nullptr) return FALSE;
  wchar_t* end = nullptr;
  const long number = std::wcstol(text, &end, 10);
  if (end == text || *end != L'\0') return FALSE;
  set_value(static_cast<int>(
      std::clamp(number, static_cast<long>(field_.min()), static_cast<long>(field_.max()))));
  return TRUE;
}

void SpinBox::paint() {
  PAINTSTRUCT paint_area;
  HDC canvas = BeginPaint(handle(), &paint_area);
  RECT area;
  GetClientRect(handle(), &area);
  draw(canvas, area);
  EndPaint(handle(), &paint_area);
}

void SpinBox::draw(HDC canvas, const RECT& area) const {
  FillRect(canvas, &area, GetSysColorBrush(COLOR_WINDOW));
  draw_edge(handle(), canvas, area);
  RECT inside = area;
  const int margin = win32::scale(3, win32::window_dpi(handle()));
  InflateRect(&inside, -margin, -margin);
  const bool focused = has_focus();
  if (focused) FillRect(canvas, &inside, GetSysColorBrush(COLOR_HIGHLIGHT));
  SetBkMode(canvas, TRANSPARENT);
  SetTextColor(canvas, GetSysColor(focused     ? COLOR_HIGHLIGHTTEXT
                                   : enabled() ? COLOR_WINDOWTEXT
                                               : COLOR_GRAYTEXT));
  HGDIOBJ old_font = SelectObject(canvas, font_);
  const std::wstring text = win32::wide(field_.text());
  DrawTextW(canvas, text.c_str(), static_cast<int>(text.size()), &inside,
            DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
  SelectObject(canvas, old_font);
  if (focused) DrawFocusRect(canvas, &inside);
}

}  // namespace tallowmere
