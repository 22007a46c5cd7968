#pragma once

#include <windows.h>

#include <functional>
#include <span>

#include "shell/command_table.h"

namespace tallowmere {

/// The button or menu entry of one command.
struct CommandControl {
  const Command* command;
  int id;
};

/// All commands of the main window, in the order of the command table.
std::span<const CommandControl> command_controls();

/// Whether the command with this number can be used; false for an unknown number.
bool command_enabled(int id, const WindowState& state);

/// Enables and disables the buttons of `window` and the entries of its menu and of `quick`. Before
/// a button is disabled, `leave` moves the focus on from it.
void enable_commands(HWND window, HMENU quick, const WindowState& state,
                     const std::function<void(HWND)>& leave);

}  // namespace tallowmere
