#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "launch/script_player.h"

namespace tallowmere::win32 {

/// A main window of another program.
struct OtherWindow {
  HWND handle = nullptr;
  DWORD process_id = 0;
  std::string title;
};

/// Calls `visit` for each visible one, from the foremost on.
void visit_other_windows(const std::function<void(const OtherWindow&)>& visit);

/// Describes one window; its process is 0 when the window is gone.
OtherWindow other_window(HWND window);

/// Asks the system to bring the window to the front. While the user works elsewhere, the system
/// only flashes the window's button in the task bar.
void bring_to_front(HWND window);

/// True when the window is in front and some control of it has the focus.
bool is_in_front(HWND window);

/// Returns what the next key would reach, seen from the window that it is meant for.
KeyTarget key_target(HWND window);

/// True when the window answers soon (see answer_ms), or is gone.
bool answers(HWND window);

}  // namespace tallowmere::win32
