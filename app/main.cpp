#include <windows.h>

#include <shellapi.h>

#include <cstdlib>
#include <memory>

#include "app/Form1.h"
#include "shell/start_folder.h"
#include "win32/ansi_code_page.h"
#include "win32/guarded.h"
#include "win32/message_loop.h"
#include "win32/program.h"
#include "win32/registry.h"
#include "win32/text.h"
#include "win32/win_clock.h"
#include "win32/win_file_system.h"

namespace {

/// The program's first argument, UTF-8; empty without one.
std::string first_argument() {
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> arguments(
      CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
  return arguments && count > 1 ? tallowmere::win32::narrow(arguments.get()[1]) : std::string();
}

// Everything that lives as long as the program is owned here and handed on by reference. At the end
// a thread may still wait for a disk and use it: nothing is destroyed, the process ends as it is.
int run_program(int show_command) {
  using namespace tallowmere;
  win32::load_libraries_from_system();
  // The program's own messages report an empty drive.
  SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS);
  const CodePage page = win32::ansi_code_page();
  const win32::WinClock clock;
  win32::WinFileSystem files;
  win32::RegistrySettings settings;
  SearchCriteria search;
  Form1 form({search, settings, files, clock, page, win32::program_folder()});
  const std::string folder = start_folder(first_argument());
  if (!folder.empty()) form.set_start_folder(folder);
  form.show(show_command);
  ExitProcess(static_cast<UINT>(win32::run_message_loop()));
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int show_command) {
  return tallowmere::win32::guarded(EXIT_FAILURE, [=] { return run_program(show_command); });
}
