#include "tools/driver/program.h"

#include <stdexcept>

#include "tools/driver/text.h"

namespace tallowmere::driver {

namespace {

constexpr int message_text_id = 0xFFFF;  // the static control with a message's prompt

struct WindowQuery {
  DWORD process_id;
  std::wstring caption;
  HWND found;
};

BOOL CALLBACK check_window(HWND window, LPARAM parameter) {
  auto* query = reinterpret_cast<WindowQuery*>(parameter);
  DWORD process_id = 0;
  GetWindowThreadProcessId(window, &process_id);
  if (process_id != query->process_id || !IsWindowVisible(window)) return TRUE;
  wchar_t caption[512];
  const int length = GetWindowTextW(window, caption, 512);
  if (query->caption != std::wstring_view(caption, static_cast<std::size_t>(length))) return TRUE;
  query->found = window;
  return FALSE;
}

}  // namespace

Program::Program(const std::string& path, std::string_view arguments) {
  std::wstring command = L"\"" + to_wide(path) + L"\" " + to_wide(arguments);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &startup, &process_)) {
    throw std::runtime_error("cannot start " + path + ", error " + std::to_string(GetLastError()));
  }
  WaitForInputIdle(process_.hProcess, 10000);
}

Program::~Program() {
  if (is_running()) {
    TerminateProcess(process_.hProcess, 1);
    WaitForSingleObject(process_.hProcess, 5000);
  }
  CloseHandle(process_.hThread);
  CloseHandle(process_.hProcess);
}

Window Program::find_window(std::string_view caption) const {
  WindowQuery query{process_.dwProcessId, to_wide(caption), nullptr};
  EnumWindows(check_window, reinterpret_cast<LPARAM>(&query));
  return Window(query.found);
}

Window Program::wait_for_window(std::string_view caption, int milliseconds) const {
  Window window;
  wait_until([&] { return static_cast<bool>(window = find_window(caption)); }, milliseconds);
  return window;
}

bool Program::is_running() const {
  return WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT;
}

bool Program::wait_for_exit(int milliseconds) const {
  return WaitForSingleObject(process_.hProcess, static_cast<DWORD>(milliseconds)) == WAIT_OBJECT_0;
}

DWORD Program::exit_code() const {
  DWORD code = 0;
  GetExitCodeProcess(process_.hProcess, &code);
  return code;
}

std::string message_box_text(Window box) {
  return box.child(message_text_id).text();
}

std::string own_folder() {
  wchar_t path[32768];
  const DWORD length = GetModuleFileNameW(nullptr, path, 32768);
  const std::string full = from_wide(std::wstring_view(path, length));
  return full.substr(0, full.rfind('\\') + 1);
}

}  // namespace tallowmere::driver
