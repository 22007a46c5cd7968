#include "shell/command_table.h"

namespace tallowmere {
namespace {

using enum EnabledRule;

constexpr Command commands[] = {
    // The Search button stays: during a search it is the Stop button.
    {"cmdSearch", always},
    {"cmdView", unavailable},
    {"cmdFindNext", unavailable},
    {"cmdFindPrev", unavailable},
    {"cmdLaunch", unavailable},
    {"cmdHyper", unavailable},
    {"cmdRestore", unavailable},
    {"cmdExit", not_searching},
    {"mnuView", unavailable},
    {"mnuLaunch", unavailable},
    {"mnuMove", unavailable},
    {"mnuCopy", unavailable},
    {"mnuRename", unavailable},
    {"mnuDelete", unavailable},
    {"mnuRemove", unavailable},
    {"mnuSelectAll", list_not_empty},
    {"mnuExit", not_searching},
    {"mnuCopyToClipboard", unavailable},
    {"mnuAppendToClipboard", unavailable},
    {"mnuCopyFilename", unavailable},
    {"mnuFindNext", unavailable},
    {"mnuFindPrev", unavailable},
    {"mnuHyper", unavailable},
    {"mnuRestore", unavailable},
    {"mnuStart", not_searching},
    {"mnuStop", searching},
    {"mnuSoundOn", always},
    {"mnuMinimizeOn", not_searching},
    {"mnuFindOnLaunch", always},
    {"mnuFontStyle", unavailable},
    {"mnuLargerFont", unavailable},
    {"mnuSmallerFont", unavailable},
    {"mnuSort0", not_searching},
    {"mnuSort1", not_searching},
    {"mnuSort2", not_searching},
    {"mnuSort3", not_searching},
    {"mnuSort4", not_searching},
    {"mnuQTips", unavailable},
    {"mnuHints", unavailable},
    {"mnuAbout", unavailable},
    {"mnuQCopy", unavailable},
    {"mnuQAppend", unavailable},
    {"mnuQHyper", unavailable},
    {"mnuSearchNew", not_searching},
    {"mnuSearchList", list_not_empty},
    {"mnuSearchFile", row_selected},
};

}  // namespace

std::span<const Command> command_table() {
  return commands;
}

const Command* find_command(std::string_view name) {
  for (const Command& command : commands) {
    if (command.name == name) return &command;
  }
  return nullptr;
}

bool is_enabled(EnabledRule rule, const WindowState& state) {
  switch (rule) {
    case always:
      return true;
    case not_searching:
      return !state.searching;
    case searching:
      return state.searching;
    case list_not_empty:
      return !state.searching && state.rows > 0;
    case row_selected:
      return !state.searching && state.row_selected;
    case unavailable:
      break;
  }
  return false;
}

}  // namespace tallowmere
