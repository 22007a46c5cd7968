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

/// Calls `visit` for each visible one, the foremost first.
void visit_other_windows(const std::function<void(const OtherWindow&)>& visit);

/// The same of one window; its process is 0 when the window is gone.
OtherWindow other_window(HWND window);

/// Asks the system to put the window in front. Where the user is at work elsewhere, the system only
/// makes the window's button in the task bar flash.
void bring_to_front(HWND window);

/// True when the window is in front and has got so far as to give some control the focus.
bool is_in_front(HWND window);

/// What the next key would reach, seen from the window that it is meant for.
KeyTarget key_target(HWND window);

/// True when the window answers within a moment, or is gone.
bool answers(HWND window);

}  // namespace tallowmere::win32
