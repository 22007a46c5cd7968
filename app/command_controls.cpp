#include "app/command_controls.h"

#include <array>
#include <cassert>

#include "app/resource.h"
#include "win32/menu.h"

namespace tallowmere {

namespace {

struct NamedId {
  const char* name;
  int id;
};

constexpr NamedId named_ids[] = {
    {"cmdSearch", IDC_CMDSEARCH},
    {"cmdView", IDC_CMDVIEW},
    {"cmdFindNext", IDC_CMDFINDNEXT},
    {"cmdFindPrev", IDC_CMDFINDPREV},
    {"cmdLaunch", IDC_CMDLAUNCH},
    {"cmdHyper", IDC_CMDHYPER},
    {"cmdRestore", IDC_CMDRESTORE},
    {"cmdExit", IDC_CMDEXIT},
    {"mnuView", ID_MNUVIEW},
    {"mnuLaunch", ID_MNULAUNCH},
    {"mnuMove", ID_MNUMOVE},
    {"mnuCopy", ID_MNUCOPY},
    {"mnuRename", ID_MNURENAME},
    {"mnuDelete", ID_MNUDELETE},
    {"mnuRemove", ID_MNUREMOVE},
    {"mnuSelectAll", ID_MNUSELECTALL},
    {"mnuExit", ID_MNUEXIT},
    {"mnuCopyToClipboard", ID_MNUCOPYTOCLIPBOARD},
    {"mnuAppendToClipboard", ID_MNUAPPENDTOCLIPBOARD},
    {"mnuCopyFilename", ID_MNUCOPYFILENAME},
    {"mnuFindNext", ID_MNUFINDNEXT},
    {"mnuFindPrev", ID_MNUFINDPREV},
    {"mnuHyper", ID_MNUHYPER},
    {"mnuRestore", ID_MNURESTORE},
    {"mnuStart", ID_MNUSTART},
    {"mnuStop", ID_MNUSTOP},
    {"mnuSoundOn", ID_MNUSOUNDON},
    {"mnuMinimizeOn", ID_MNUMINIMIZEON},
    {"mnuFindOnLaunch", ID_MNUFINDONLAUNCH},
    {"mnuFontStyle", ID_MNUFONTSTYLE},
    {"mnuLargerFont", ID_MNULARGERFONT},
    {"mnuSmallerFont", ID_MNUSMALLERFONT},
    {"mnuSort0", ID_MNUSORT},
    {"mnuSort1", ID_MNUSORT + 1},
    {"mnuSort2", ID_MNUSORT + 2},
    {"mnuSort3", ID_MNUSORT + 3},
    {"mnuSort4", ID_MNUSORT + 4},
    {"mnuQTips", ID_MNUQTIPS},
    {"mnuHints", ID_MNUHINTS},
    {"mnuAbout", ID_MNUABOUT},
    {"mnuQCopy", ID_MNUQCOPY},
    {"mnuQAppend", ID_MNUQAPPEND},
    {"mnuQHyper", ID_MNUQHYPER},
    {"mnuSearchNew", ID_MNUSEARCHNEW},
    {"mnuSearchList", ID_MNUSEARCHLIST},
    {"mnuSearchFile", ID_MNUSEARCHFILE},
};

using CommandControls = std::array<CommandControl, std::size(named_ids)>;

CommandControls find_controls() {
  CommandControls controls{};
  for (std::size_t i = 0; i < controls.size(); ++i) {
    controls[i] = {find_command(named_ids[i].name), named_ids[i].id};
    assert(controls[i].command != nullptr);
  }
  return controls;
}

}  // namespace

std::span<const CommandControl> command_controls() {
  static const CommandControls controls = find_controls();
  return controls;
}

bool command_enabled(int id, const WindowState& state) {
  for (const CommandControl& control : command_controls()) {
    if (control.id == id) return is_enabled(control.command->rule, state);
  }
  return false;
}

void enable_commands(HWND window, HMENU quick, const WindowState& state,
                     const std::function<void(HWND)>& leave) {
  const HMENU menu = GetMenu(window);
  for (const CommandControl& control : command_controls()) {
    const bool on = is_enabled(control.command->rule, state);
    const HWND button = GetDlgItem(window, control.id);
    if (button == nullptr) {
      // The menu that lacks the entry ignores the call.
      win32::enable_entry(menu, control.id, on);
      win32::enable_entry(quick, control.id, on);
      continue;
    }
    if (!on) leave(button);
    EnableWindow(button, on);
  }
}

}  // namespace tallowmere
