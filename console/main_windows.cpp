#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <string_view>

#include "console/console_search.h"
#include "engine/unicode.h"
#include "win32/ansi_code_page.h"
#include "win32/win_clock.h"
#include "win32/win_file_system.h"

namespace {

// The system runs the handler on a thread of its own and passes it only the kind of event.
std::atomic<bool> interrupt_asked{false};

BOOL WINAPI ask_interrupt(DWORD kind) {
  if (kind != CTRL_C_EVENT && kind != CTRL_BREAK_EVENT) return FALSE;
  interrupt_asked = true;
  return TRUE;
}

/// True for the errors by which the system, or Wine, reports that the reader has gone.
bool is_closed_pipe(DWORD error) {
  return error == ERROR_BROKEN_PIPE || error == ERROR_NO_DATA || error == ERROR_PIPE_NOT_CONNECTED;
}

/// Writes in pieces: Windows 7 refuses more than some 64 KB at once.
bool write_console(HANDLE console, std::u16string_view text) {
  constexpr std::size_t longest_piece = 8000;
  while (!text.empty()) {
    std::size_t length = std::min(text.size(), longest_piece);
    if (length < text.size() && IS_HIGH_SURROGATE(text[length - 1])) --length;
    DWORD count = 0;
    const auto units = static_cast<DWORD>(length);
    if (!WriteConsoleW(console, text.data(), units, &count, nullptr) || count == 0) return false;
    text.remove_prefix(count);
  }
  return true;
}

/// Writes UTF-16 to a console, UTF-8 to a file or a pipe.
tallowmere::console::Written write_all(DWORD which, std::string_view text) {
  using tallowmere::console::Written;
  const HANDLE handle = GetStdHandle(which);
  DWORD mode = 0;
  DWORD count = 0;
  if (GetConsoleMode(handle, &mode)) {
    return write_console(handle, tallowmere::to_utf16(text)) ? Written::good : Written::failed;
  }
  while (!text.empty()) {
    if (!WriteFile(handle, text.data(), static_cast<DWORD>(text.size()), &count, nullptr)) {
      return is_closed_pipe(GetLastError()) ? Written::closed : Written::failed;
    }
    text.remove_prefix(count);
  }
  return Written::good;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  using namespace tallowmere;
  SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS);  // an empty drive asks for no disk
  SetConsoleCtrlHandler(ask_interrupt, TRUE);
  _setmode(_fileno(stdin), _O_BINARY);
  const win32::WinFileSystem files;
  const win32::WinClock clock;
  const CodePage page = win32::ansi_code_page();
  console::Surroundings around{
      files,
      clock,
      page,
      [](std::string_view text) { return write_all(STD_OUTPUT_HANDLE, text); },
      [](std::string_view text) { write_all(STD_ERROR_HANDLE, text); },
      [] { return interrupt_asked.load(std::memory_order_relaxed); }};
  std::vector<std::string> utf8;
  for (int i = 1; i < count; ++i) {
    utf8.push_back(to_utf8(reinterpret_cast<const char16_t*>(arguments[i])));
  }
  // Threads that hang in the system may still use what is here.
  std::_Exit(console::run(utf8, around));
}
