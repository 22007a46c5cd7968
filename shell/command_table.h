#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace tallowmere {

/// What decides whether commands can be used.
struct WindowState {
  bool searching = false;
  std::size_t rows = 0;
  bool row_selected = false;
};

/// When a command can be used.
enum class EnabledRule {
  always,
  not_searching,
  searching,
  list_not_empty,  ///< and not searching
  row_selected,    ///< and not searching
  unavailable      ///< the program does not have the command yet
};

/// One button or menu entry of the main window.
struct Command {
  std::string_view name;  ///< of the control; the five sort entries are mnuSort0 to mnuSort4
  EnabledRule rule;
};

/// Every command of the main window, in the order of the buttons, then of the menus.
std::span<const Command> command_table();

/// The command of this name, null when there is none.
const Command* find_command(std::string_view name);

bool is_enabled(EnabledRule rule, const WindowState& state);

}  // namespace tallowmere
