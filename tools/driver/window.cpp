#include "tools/driver/window.h"

#include <commctrl.h>

#include "tools/driver/remote_memory.h"
#include "tools/driver/text.h"

namespace tallowmere::driver {

bool wait_until(const std::function<bool()>& done, int milliseconds) {
  const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
  while (!done()) {
    if (GetTickCount64() >= end) return false;
    Sleep(5);
  }
  return true;
}

void press_key(WORD virtual_key, WORD modifier) {
  INPUT inputs[4]{};
  UINT count = 0;
  const auto add = [&](WORD key, DWORD flags) {
    if (key == 0) return;
    inputs[count].type = INPUT_KEYBOARD;
    inputs[count].ki.wVk = key;
    inputs[count++].ki.dwFlags = flags;
  };
  add(modifier, 0);
  add(virtual_key, 0);
  add(virtual_key, KEYEVENTF_KEYUP);
  add(modifier, KEYEVENTF_KEYUP);
  SendInput(count, inputs, sizeof(INPUT));
}

std::string clipboard_text() {
  if (!wait_until([] { return OpenClipboard(nullptr) != 0; })) return {};
  std::string text;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    text = from_wide(static_cast<const wchar_t*>(GlobalLock(data)));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return text;
}

Window Window::child(int id) const {
  return Window(GetDlgItem(handle_, id));
}

Window Window::child_of_class(std::wstring_view name) const {
  return Window(FindWindowExW(handle_, nullptr, std::wstring(name).c_str(), nullptr));
}

int Window::check_state() const {
  return static_cast<int>(SendMessageW(handle_, BM_GETCHECK, 0, 0));
}

RECT Window::rectangle() const {
  RECT area{};
  GetWindowRect(handle_, &area);
  return area;
}

// GetWindowText does not ask controls of other processes; the message does.
std::string Window::text() const {
  const LRESULT length = SendMessageW(handle_, WM_GETTEXTLENGTH, 0, 0);
  std::wstring buffer(static_cast<std::size_t>(length) + 1, L'\0');
  const LRESULT copied =
      SendMessageW(handle_, WM_GETTEXT, buffer.size(), reinterpret_cast<LPARAM>(buffer.data()));
  buffer.resize(static_cast<std::size_t>(copied));
  return from_wide(buffer);
}

void Window::set_text(std::string_view text) const {
  SendMessageW(handle_, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(to_wide(text).c_str()));
}

void Window::click() const {
  PostMessageW(handle_, BM_CLICK, 0, 0);
}

void Window::command(int id) const {
  PostMessageW(handle_, WM_COMMAND, static_cast<WPARAM>(id), 0);
}

void Window::key(WORD virtual_key) const {
  PostMessageW(handle_, WM_KEYDOWN, virtual_key, 1);
  PostMessageW(handle_, WM_KEYUP, virtual_key, static_cast<LPARAM>(0xC0000001u));
}

bool Window::bring_to_front() const {
  return wait_until([this] {
    SetForegroundWindow(handle_);
    return GetForegroundWindow() == handle_;
  });
}

namespace {

GUITHREADINFO thread_state(HWND window) {
  GUITHREADINFO state{};
  state.cbSize = sizeof state;
  GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &state);
  return state;
}

}  // namespace

bool Window::has_focus(Window control) const {
  return thread_state(handle_).hwndFocus == control.handle();
}

bool Window::shows_menu() const {
  return (thread_state(handle_).flags & GUI_INMENUMODE) != 0;
}

void Window::ask_for_menu(Window control) const {
  PostMessageW(handle_, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(control.handle()), -1);
}

void Window::close() const {
  PostMessageW(handle_, WM_CLOSE, 0, 0);
}

namespace {

std::vector<std::string> texts_of(HWND handle, UINT count_message, UINT length_message,
                                  UINT text_message) {
  std::vector<std::string> texts;
  const LRESULT count = SendMessageW(handle, count_message, 0, 0);
  for (LRESULT index = 0; index < count; ++index) {
    const WPARAM entry = static_cast<WPARAM>(index);
    const LRESULT length = SendMessageW(handle, length_message, entry, 0);
    if (length < 0) break;
    std::wstring buffer(static_cast<std::size_t>(length) + 1, L'\0');
    SendMessageW(handle, text_message, entry, reinterpret_cast<LPARAM>(buffer.data()));
    buffer.resize(static_cast<std::size_t>(length));
    texts.push_back(from_wide(buffer));
  }
  return texts;
}

}  // namespace

std::vector<std::string> Window::list_box_texts() const {
  return texts_of(handle_, LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT);
}

std::vector<std::string> Window::combo_box_texts() const {
  return texts_of(handle_, CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT);
}

void Window::open_list_box_entry(int index) const {
  SendMessageW(handle_, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
  PostMessageW(GetParent(handle_), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(handle_), LBN_DBLCLK),
               reinterpret_cast<LPARAM>(handle_));
}

namespace {

std::pair<DWORD, DWORD> selection_of(HWND box) {
  DWORD start = 0;
  DWORD end = 0;
  SendMessageW(box, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  return {start, end};
}

}  // namespace

std::string Window::selected_text() const {
  const auto [start, end] = selection_of(handle_);
  // Positions count the units of the system, so the text is cut before it becomes UTF-8.
  const std::wstring all = to_wide(text());
  return end <= all.size() ? from_wide(all.substr(start, end - start)) : std::string();
}

int Window::selection_start() const {
  return static_cast<int>(selection_of(handle_).first);
}

void Window::select_text(int start, int length) const {
  SendMessageW(handle_, EM_SETSEL, static_cast<WPARAM>(start), start + length);
  SendMessageW(handle_, WM_KEYUP, VK_RIGHT, static_cast<LPARAM>(0xC0000001u));
}

int Window::first_visible_line() const {
  return static_cast<int>(SendMessageW(handle_, EM_GETFIRSTVISIBLELINE, 0, 0));
}

std::vector<std::string> Window::panel_texts() const {
  std::vector<std::string> texts;
  const LRESULT count = SendMessageW(handle_, SB_GETPARTS, 0, 0);
  for (LRESULT part = 0; part < count; ++part) {
    const WPARAM panel = static_cast<WPARAM>(part);
    const std::size_t length = LOWORD(SendMessageW(handle_, SB_GETTEXTLENGTHW, panel, 0));
    RemoteMemory memory(handle_, (length + 1) * sizeof(wchar_t));
    SendMessageW(handle_, SB_GETTEXTW, panel, memory.address());
    texts.push_back(from_wide(memory.read_text(length)));
  }
  return texts;
}

}  // namespace tallowmere::driver
