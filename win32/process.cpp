#include "win32/process.h"

#include <shellapi.h>

#include <cstddef>

#include "win32/com_apartment.h"
#include "win32/system_error.h"
#include "win32/text.h"

namespace tallowmere::win32 {
namespace {

constexpr DWORD path_length = 32768;  // characters; no path of the system is longer

bool is_full_path(std::wstring_view path) {
  return path.starts_with(L"\\\\") || (path.size() > 2 && path[1] == L':' && path[2] == L'\\');
}

/// Returns what a function of the system writes; it must return the size that it needs when the
/// buffer is too small.
template <typename Function>
std::wstring system_text(Function function) {
  std::wstring text;
  DWORD length = function(nullptr, 0);
  while (length > text.size()) {
    text.resize(length);
    length = function(text.data(), length);
  }
  text.resize(length);
  return text;
}

/// Returns where programs are looked for. The current folder is not included: a program beside the
/// searched files could be taken for another one with its name.
std::wstring program_folders() {
  const std::wstring system =
      system_text([](wchar_t* text, DWORD size) { return GetSystemDirectoryW(text, size); });
  const std::wstring windows =
      system_text([](wchar_t* text, DWORD size) { return GetWindowsDirectoryW(text, size); });
  const std::wstring path = system_text(
      [](wchar_t* text, DWORD size) { return GetEnvironmentVariableW(L"PATH", text, size); });
  return system + L";" + windows + L";" + path;
}

/// Looks for a program, unless its path is full already; empty when there is none.
std::wstring find_program(const std::wstring& program) {
  if (is_full_path(program)) return program;
  const std::wstring folders = program_folders();
  return system_text([&](wchar_t* text, DWORD size) {
    return SearchPathW(folders.c_str(), program.c_str(), nullptr, size, text, nullptr);
  });
}

/// Returns a process's integrity level; 0 when it is unknown, the highest number when the system
/// denies it.
DWORD integrity_level(HANDLE process) {
  const auto failure = [] { return GetLastError() == ERROR_ACCESS_DENIED ? MAXDWORD : 0; };
  HANDLE opened = nullptr;
  if (!OpenProcessToken(process, TOKEN_QUERY, &opened)) return failure();
  const Handle token(opened);
  alignas(TOKEN_MANDATORY_LABEL)
      std::byte label[sizeof(TOKEN_MANDATORY_LABEL) + SECURITY_MAX_SID_SIZE];
  DWORD size = 0;
  if (!GetTokenInformation(token.get(), TokenIntegrityLevel, label, sizeof label, &size)) {
    return failure();
  }
  const PSID sid = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(label)->Label.Sid;
  return *GetSidSubAuthority(sid, static_cast<DWORD>(*GetSidSubAuthorityCount(sid)) - 1);
}

}  // namespace

std::optional<SystemError> StartedProgram::start(const std::string& program,
                                                 const std::string& command_line) {
  const std::wstring path = find_program(wide(program));
  if (path.empty()) return system_error(ERROR_FILE_NOT_FOUND);
  std::wstring line = wide(command_line);  // the system writes into it
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_SHOWMAXIMIZED;
  PROCESS_INFORMATION information{};
  if (!CreateProcessW(path.c_str(), line.data(), nullptr, nullptr, FALSE, CREATE_DEFAULT_ERROR_MODE,
                      nullptr, nullptr, &startup, &information)) {
    return last_system_error();
  }
  CloseHandle(information.hThread);
  keep(information.hProcess);
  return std::nullopt;
}

std::optional<SystemError> StartedProgram::open(const std::string& path, HWND owner) {
  const ComApartment apartment;
  const std::wstring file = wide(path);
  SHELLEXECUTEINFOW launch{};
  launch.cbSize = sizeof launch;
  launch.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_FLAG_NO_UI;
  launch.hwnd = owner;
  launch.lpFile = file.c_str();
  launch.nShow = SW_SHOWMAXIMIZED;
  if (!ShellExecuteExW(&launch)) return last_system_error();
  keep(launch.hProcess);
  return std::nullopt;
}

/// Takes over the handle, which is null when the system has started nothing.
void StartedProgram::keep(HANDLE process) {
  process_.reset(process);
  id_ = process != nullptr ? GetProcessId(process) : 0;
  if (id_ != 0) AllowSetForegroundWindow(id_);
}

bool StartedProgram::is_running() const {
  return process_ != nullptr && WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT;
}

bool StartedProgram::is_ready() const {
  return process_ != nullptr && WaitForInputIdle(process_.get(), 0) == 0;
}

OtherProcess::OtherProcess(DWORD id)
    : process_(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id)),
      protected_(process_ == nullptr && GetLastError() == ERROR_ACCESS_DENIED) {}

bool OtherProcess::runs(const std::string& name) const {
  if (process_ == nullptr) return false;
  std::wstring path(path_length, L'\0');
  DWORD length = path_length;
  if (!QueryFullProcessImageNameW(process_.get(), 0, path.data(), &length)) return false;
  path.resize(length);
  const std::wstring program = path.substr(path.rfind(L'\\') + 1);
  const std::wstring wanted = wide(name);
  return CompareStringOrdinal(program.c_str(), static_cast<int>(program.size()), wanted.c_str(),
                              static_cast<int>(wanted.size()), TRUE) == CSTR_EQUAL;
}

bool OtherProcess::outranks_us() const {
  return protected_ || (process_ != nullptr &&
                        integrity_level(process_.get()) > integrity_level(GetCurrentProcess()));
}

}  // namespace tallowmere::win32
