#include <windows.h>

#include "app/Form1.h"
#include "win32/ansi_code_page.h"
#include "win32/message_loop.h"
#include "win32/program.h"
#include "win32/registry.h"
#include "win32/win_clock.h"
#include "win32/win_file_system.h"

// Everything that lives as long as the program is owned here and handed on by reference.
int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int show_command) {
  using namespace tallowmere;
  const CodePage page = win32::ansi_code_page();
  const win32::WinClock clock;
  win32::WinFileSystem files;
  win32::RegistrySettings settings;
  SearchCriteria search;
  Form1 form({search, settings, files, clock, page, win32::program_folder()});
  form.show(show_command);
  return win32::run_message_loop();
}
