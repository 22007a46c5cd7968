#include "win32/other_windows.h"

#include "win32/text.h"

namespace tallowmere::win32 {
namespace {

constexpr UINT answer_ms = 50;
constexpr int title_length = 512;  // longer titles are cut

// GetWindowText asks no other program, so a program that hangs cannot hold this one up.
std::string title_of(HWND window) {
  wchar_t title[title_length];
  const int length = GetWindowTextW(window, title, title_length);
  return narrow({title, static_cast<std::size_t>(length)});
}

DWORD process_of(HWND window) {
  DWORD process_id = 0;
  GetWindowThreadProcessId(window, &process_id);
  return process_id;
}

BOOL CALLBACK visit_window(HWND window, LPARAM parameter) {
  if (process_of(window) != GetCurrentProcessId() && IsWindowVisible(window)) {
    const auto& visit =
        *reinterpret_cast<const std::function<void(const OtherWindow&)>*>(parameter);
    visit(other_window(window));
  }
  return TRUE;
}

GUITHREADINFO input_state(HWND window) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  if (!GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info)) info = {};
  return info;
}

/// True for a field for text, which is a control with a selection.
bool is_text_field(HWND control) {
  DWORD_PTR code = 0;
  return control != nullptr &&
         SendMessageTimeoutW(control, WM_GETDLGCODE, 0, 0, SMTO_ABORTIFHUNG, answer_ms, &code) &&
         (code & DLGC_HASSETSEL) != 0;
}

}  // namespace

void visit_other_windows(const std::function<void(const OtherWindow&)>& visit) {
  EnumWindows(visit_window, reinterpret_cast<LPARAM>(&visit));
}

OtherWindow other_window(HWND window) {
  return {window, process_of(window), title_of(window)};
}

void bring_to_front(HWND window) {
  if (IsIconic(window)) ShowWindowAsync(window, SW_RESTORE);
  SetForegroundWindow(window);
}

bool is_in_front(HWND window) {
  return GetForegroundWindow() == window && input_state(window).hwndFocus != nullptr;
}

KeyTarget key_target(HWND window) {
  const HWND front = GetForegroundWindow();
  if (front == nullptr || window == nullptr) return KeyTarget::elsewhere;
  const GUITHREADINFO info = input_state(front);
  if (front == window) {
    return (info.flags & GUI_INMENUMODE) != 0 ? KeyTarget::menu : KeyTarget::window;
  }
  // Other programs may put their windows over it.
  const bool over_it =
      GetAncestor(front, GA_ROOTOWNER) == window && process_of(front) == process_of(window);
  if (!over_it) return KeyTarget::elsewhere;
  return is_text_field(info.hwndFocus) ? KeyTarget::text_field : KeyTarget::dialog;
}

bool answers(HWND window) {
  DWORD_PTR ignored = 0;
  return !IsWindow(window) ||
         SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, answer_ms, &ignored) != 0;
}

}  // namespace tallowmere::win32
