#include "shell/command_table.h"

namespace tallowmere {
namespace {

using enum EnabledRule;

constexpr Command commands[] = {
    // The Search button stays: during a search it is the Stop button.
    {"cmdSearch", always},
    {"cmdView", row_not_viewed},
    {"cmdFindNext", viewing},
    {"cmdFindPrev", viewing},
    {"cmdLaunch", row_selected},
    {"cmdHyper", hyper_find},
    {"cmdRestore", restore_find},
    {"cmdExit", not_busy},
    {"mnuView", row_not_viewed},
    {"mnuLaunch", row_selected},
    {"mnuMove", list_not_empty},
    {"mnuCopy", list_not_empty},
    {"mnuRename", list_not_empty},
    {"mnuDelete", list_not_empty},
    {"mnuRemove", list_not_empty},
    {"mnuSelectAll", list_not_empty},
    {"mnuExit", not_busy},
    {"mnuCopyToClipboard", text_marked},
    {"mnuAppendToClipboard", text_marked},
    {"mnuCopyFilename", list_not_empty},
    {"mnuFindNext", viewing},
    {"mnuFindPrev", viewing},
    {"mnuHyper", hyper_find},
    {"mnuRestore", restore_find},
    {"mnuStart", not_busy},
    {"mnuStop", busy},
    {"mnuSoundOn", always},
    {"mnuMinimizeOn", not_busy},
    {"mnuFindOnLaunch", always},
    {"mnuFontStyle", not_busy},
    {"mnuLargerFont", not_busy},
    {"mnuSmallerFont", not_busy},
    {"mnuSort0", not_busy},
    {"mnuSort1", not_busy},
    {"mnuSort2", not_busy},
    {"mnuSort3", not_busy},
    {"mnuSort4", not_busy},
    {"mnuQTips", not_busy},
    {"mnuHints", not_busy},
    {"mnuAbout", not_busy},
    {"mnuQCopy", text_marked},
    {"mnuQAppend", text_marked},
    {"mnuQHyper", hyper_find},
    {"mnuSearchNew", not_busy},
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
  if (rule == always) return true;
  if (state.busy()) return rule == EnabledRule::busy;
  switch (rule) {
    case not_busy:
      return true;
    case list_not_empty:
      return state.rows > 0;
    case EnabledRule::row_selected:
      return state.row_selected;
    case row_not_viewed:
      return state.row_selected && !state.row_viewed;
    case EnabledRule::viewing:
      return state.viewing;
    case hyper_find:
      return state.viewing && (state.text_selected || state.user_restored);
    case restore_find:
      return state.viewing && state.hyper_current;
    case EnabledRule::text_marked:
      return state.text_marked;
    default:
      return false;
  }
}

}  // namespace tallowmere
