#include "win32/form.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "win32/dialog_template.h"
#include "win32/dpi.h"
#include "win32/guarded.h"
#include "win32/message_loop.h"

namespace tallowmere::win32 {

namespace {

constexpr wchar_t form_property[] = L"Tallowmere.Form";

/// Posted to the form itself when its DPI changes, to be served when the system has fitted the
/// controls. Derived classes use the numbers below this one.
constexpr UINT dpi_changed_message = WM_APP + 0x100;

void load_common_controls() {
  INITCOMMONCONTROLSEX classes{
      sizeof classes, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES | ICC_UPDOWN_CLASS | ICC_LINK_CLASS};
  InitCommonControlsEx(&classes);
}

/// Returns the icon of a window, its own or else that of its class.
LPARAM icon_of(HWND window, WPARAM size, int class_icon) {
  const LRESULT own = SendMessageW(window, WM_GETICON, size, 0);
  return own != 0 ? own : static_cast<LPARAM>(GetClassLongPtrW(window, class_icon));
}

/// Gives a dialog the icons of its owner, which may be a dialog, too.
void share_icons(HWND owner, HWND window) {
  SendMessageW(window, WM_SETICON, ICON_BIG, icon_of(owner, ICON_BIG, GCLP_HICON));
  SendMessageW(window, WM_SETICON, ICON_SMALL, icon_of(owner, ICON_SMALL, GCLP_HICONSM));
}

BOOL CALLBACK pass_on(HWND control, LPARAM message) {
  const MSG& passed = *reinterpret_cast<const MSG*>(message);
  SendMessageW(control, passed.message, passed.wParam, passed.lParam);
  return TRUE;
}

/// Returns where something of this length begins when it is centred between `begin` and `end` and
/// kept on a screen.
int centred(LONG begin, LONG end, LONG length, LONG screen_begin, LONG screen_end) {
  const LONG middle = begin + (end - begin - length) / 2;
  return static_cast<int>(std::min(std::max(middle, screen_begin), screen_end - length));
}

/// True for messages whose answer a dialog procedure returns itself instead of storing it.
bool answers_directly(UINT message) {
  return (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) ||
         message == WM_COMPAREITEM || message == WM_VKEYTOITEM || message == WM_CHARTOITEM ||
         message == WM_QUERYDRAGICON;
}

}  // namespace

Form::Form(int template_id, HWND owner) {
  load_common_controls();
  const std::vector<std::byte> dialog = load_dialog_template(template_id);
  if (!dialog.empty()) {
    CreateDialogIndirectParamW(GetModuleHandleW(nullptr),
                               reinterpret_cast<const DLGTEMPLATE*>(dialog.data()), owner,
                               dialog_proc, reinterpret_cast<LPARAM>(this));
  }
  if (window_ == nullptr) throw std::runtime_error("a window cannot be created");
  dpi_ = window_dpi(window_);
  if (owner != nullptr) share_icons(owner, window_);
}

Form::~Form() {
  // The derived class, to which the handlers belong, is gone already.
  commands_.clear();
  notifications_.clear();
  hide();
  if (window_ != nullptr) DestroyWindow(window_);
}

Form* Form::from(HWND window) {
  return static_cast<Form*>(GetPropW(window, form_property));
}

void Form::command(int id, int code, Handler handler) {
  commands_[{id, code}] = std::move(handler);
}

void Form::clicked(int id, Handler handler) {
  command(id, BN_CLICKED, std::move(handler));
}

void Form::notify(int id, UINT code, NotifyHandler handler) {
  notifications_[{id, code}] = std::move(handler);
}

void Form::show_modal(HWND owner, HWND center_on) {
  if (modal_owner_ != nullptr) return;
  modal_owner_ = owner;
  // However this ends, the owner is not left disabled.
  struct End {
    Form& form;
    ~End() { form.hide(); }
  } const end{*this};
  focus_before_ = GetFocus();
  if (center_on == nullptr) center_on = owner;
  center_form(center_on);
  EnableWindow(owner, FALSE);
  ShowWindow(window_, SW_SHOW);
  if (follow_dpi()) center_form(center_on);  // the system reports its screen only now
  if (!IsChild(window_, GetFocus())) SetFocus(GetNextDlgTabItem(window_, nullptr, FALSE));
  on_shown();
  while (modal_owner_ != nullptr) {
    MSG message;
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got > 0) {
      dispatch_message(message);
      continue;
    }
    hide();
    // The outer loops must end by this message, too.
    if (got == 0) PostQuitMessage(static_cast<int>(message.wParam));
  }
}

void Form::hide() {
  if (modal_owner_ == nullptr) return;
  const HWND owner = std::exchange(modal_owner_, nullptr);
  // The order matters: hiding the active window activates an enabled one, which must be the owner.
  EnableWindow(owner, TRUE);
  ShowWindow(window_, SW_HIDE);
  const bool owners = focus_before_ == owner || IsChild(owner, focus_before_);
  if (focus_before_ != nullptr && owners && IsWindowEnabled(focus_before_)) SetFocus(focus_before_);
  focus_before_ = nullptr;
}

void Form::center_form(HWND main_window) {
  move_over(main_window);
  if (follow_dpi()) move_over(main_window);  // its size has changed
}

/// Follows a change of the DPI; false when there was none.
bool Form::follow_dpi() {
  if (new_dpi_ == 0) return false;
  const int before = std::exchange(dpi_, std::exchange(new_dpi_, 0));
  on_dpi_changed(before, dpi_);
  return true;
}

void Form::move_over(HWND main_window) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(main_window, MONITOR_DEFAULTTONEAREST), &monitor);
  RECT window;
  RECT main;
  GetWindowRect(window_, &window);
  GetWindowRect(main_window, &main);
  if (IsIconic(main_window)) main = monitor.rcWork;
  SetWindowPos(window_, nullptr,
               centred(main.left, main.right, window.right - window.left, monitor.rcWork.left,
                       monitor.rcWork.right),
               centred(main.top, main.bottom, window.bottom - window.top, monitor.rcWork.top,
                       monitor.rcWork.bottom),
               0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool Form::pre_translate(MSG&) {
  return false;
}

bool Form::on_message(UINT, WPARAM, LPARAM, LRESULT&) {
  return false;
}

bool Form::obeys() const {
  const bool has_owner = GetWindow(window_, GW_OWNER) != nullptr;
  return IsWindowEnabled(window_) && (!has_owner || IsWindowVisible(window_));
}

bool Form::run_command(int id, int code) {
  if (code < EN_SETFOCUS && !obeys()) return true;
  const auto found = commands_.find({id, code});
  if (found == commands_.end()) return false;
  found->second();
  return true;
}

bool Form::handle_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  if (on_message(message, wparam, lparam, result)) return true;
  switch (message) {
    case WM_COMMAND: {
      // Accelerators come with code 1 and no control, and count as a choice from the menu.
      const int code = lparam == 0 ? BN_CLICKED : HIWORD(wparam);
      return run_command(LOWORD(wparam), code);
    }
    case WM_NOTIFY: {
      NMHDR& header = *reinterpret_cast<NMHDR*>(lparam);
      const auto found = notifications_.find({static_cast<int>(header.idFrom), header.code});
      if (found == notifications_.end()) return false;
      result = found->second(header);
      return true;
    }
    case WM_DPICHANGED:
      new_dpi_ = LOWORD(wparam);
      PostMessageW(window_, dpi_changed_message, 0, 0);
      return false;  // the system fits the window and its controls
    case dpi_changed_message:
      follow_dpi();
      return true;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED: {
      // The common controls learn of such changes only from their parent.
      const MSG message_of_all{window_, message, wparam, lparam, 0, {}};
      EnumChildWindows(window_, &pass_on, reinterpret_cast<LPARAM>(&message_of_all));
      return false;
    }
  }
  return false;
}

INT_PTR CALLBACK Form::dialog_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    Form* form = reinterpret_cast<Form*>(lparam);
    form->window_ = window;
    SetWindowLongPtrW(window, DWLP_USER, lparam);
    SetPropW(window, form_property, form);
    return FALSE;  // the focus stays where it is: TRUE would activate the hidden window
  }
  Form* form = reinterpret_cast<Form*>(GetWindowLongPtrW(window, DWLP_USER));
  if (form == nullptr) return FALSE;
  if (message == WM_NCDESTROY) {
    RemovePropW(window, form_property);
    SetWindowLongPtrW(window, DWLP_USER, 0);
    form->window_ = nullptr;
    form->modal_owner_ = nullptr;  // gone with its owner: show_modal returns
    return FALSE;
  }
  LRESULT result = 0;
  const bool handled =
      guarded(false, [&] { return form->handle_message(message, wparam, lparam, result); });
  if (!handled) return FALSE;
  if (answers_directly(message)) return static_cast<INT_PTR>(result);
  SetWindowLongPtrW(window, DWLP_MSGRESULT, static_cast<LONG_PTR>(result));
  return TRUE;
}

}  // namespace tallowmere::win32
