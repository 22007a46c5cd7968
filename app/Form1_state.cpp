#include <algorithm>
#include <utility>

#include "app/Form1.h"
#include "app/resource.h"

namespace tallowmere {

std::span<const Form1::Command> Form1::commands() {
  using enum EnabledRule;
  static constexpr Command table[] = {
      // The Search button stays: during a search it is the Stop button.
      {IDC_CMDSEARCH, always, &Form1::cmdSearch_Click},
      {IDC_CMDVIEW, row_not_viewed, &Form1::cmdView_Click},
      {IDC_CMDFINDNEXT, viewing, &Form1::cmdFindNext_Click},
      {IDC_CMDFINDPREV, viewing, &Form1::cmdFindPrev_Click},
      {IDC_CMDLAUNCH, row_selected, &Form1::cmdLaunch_Click},
      {IDC_CMDHYPER, hyper_find, &Form1::cmdHyper_Click},
      {IDC_CMDRESTORE, restore_find, &Form1::cmdRestore_Click},
      {IDC_CMDEXIT, not_busy, &Form1::cmdExit_Click},
      {ID_MNUVIEW, row_not_viewed, &Form1::cmdView_Click},
      {ID_MNULAUNCH, row_selected, &Form1::cmdLaunch_Click},
      {ID_MNUMOVE, list_not_empty, &Form1::mnuMove_Click},
      {ID_MNUCOPY, list_not_empty, &Form1::mnuCopy_Click},
      {ID_MNURENAME, list_not_empty, &Form1::mnuRename_Click},
      {ID_MNUDELETE, list_not_empty, &Form1::mnuDelete_Click},
      {ID_MNUREMOVE, list_not_empty, &Form1::mnuRemove_Click},
      {ID_MNUOPENFOLDER, list_not_empty, &Form1::of_file<&MoreCommands::mnuOpenFolder_Click>},
      {ID_MNUOPENWITH, list_not_empty, &Form1::of_file<&MoreCommands::mnuOpenWith_Click>},
      {ID_MNUSAVELIST, list_not_empty, &Form1::mnuSaveList_Click},
      {ID_MNUPROPERTIES, list_not_empty, &Form1::of_file<&MoreCommands::mnuProperties_Click>},
      {ID_MNUSELECTALL, list_not_empty, &Form1::mnuSelectAll_Click},
      {ID_MNUEXIT, not_busy, &Form1::mnuExit_Click},
      {ID_MNUCOPYTOCLIPBOARD, text_marked, &Form1::mnuCopyToClipboard_Click},
      {ID_MNUAPPENDTOCLIPBOARD, text_marked, &Form1::mnuAppendToClipboard_Click},
      {ID_MNUCOPYFILENAME, list_not_empty, &Form1::mnuCopyFilename_Click},
      {ID_MNUFINDNEXT, viewing, &Form1::cmdFindNext_Click},
      {ID_MNUFINDPREV, viewing, &Form1::cmdFindPrev_Click},
      {ID_MNUHYPER, hyper_find, &Form1::cmdHyper_Click},
      {ID_MNURESTORE, restore_find, &Form1::cmdRestore_Click},
      {ID_MNUSTART, not_busy, &Form1::cmdSearch_Click},
      {ID_MNUSTOP, busy, &Form1::mnuStop_Click},
      {ID_MNUSOUNDON, always, &Form1::toggle<&ShellState::sound_on>},
      {ID_MNUMINIMIZEON, not_busy, &Form1::toggle<&ShellState::minimize_on>},
      {ID_MNUFINDONLAUNCH, always, &Form1::toggle<&ShellState::find_on_launch>},
      {ID_MNUUNICODE, not_busy, &Form1::mnuUnicode_Click},
      {ID_NOTELINK, not_busy, &Form1::lblNote_Click<NoteLink::read_unicode_text>},
      {ID_NOTELINK + 1, not_busy, &Form1::lblNote_Click<NoteLink::show_unread>},
      {ID_MNUFONTSTYLE, not_busy, &Form1::mnuFontStyle_Click},
      {ID_MNULARGERFONT, not_busy, &Form1::mnuLargerFont_Click},
      {ID_MNUSMALLERFONT, not_busy, &Form1::mnuSmallerFont_Click},
      {ID_MNUSORT, not_busy, &Form1::mnuSort_Click<0>},
      {ID_MNUSORT + 1, not_busy, &Form1::mnuSort_Click<1>},
      {ID_MNUSORT + 2, not_busy, &Form1::mnuSort_Click<2>},
      {ID_MNUSORT + 3, not_busy, &Form1::mnuSort_Click<3>},
      {ID_MNUSORT + 4, not_busy, &Form1::mnuSort_Click<4>},
      {ID_MNUQTIPS, not_busy, &Form1::mnuQTips_Click},
      {ID_MNUHINTS, not_busy, &Form1::mnuHints_Click},
      {ID_MNUABOUT, not_busy, &Form1::show_about_form},
      {ID_MNUQCOPY, text_marked, &Form1::mnuCopyToClipboard_Click},
      {ID_MNUQAPPEND, text_marked, &Form1::mnuAppendToClipboard_Click},
      {ID_MNUQHYPER, hyper_find, &Form1::cmdHyper_Click},
      {ID_MNUSEARCHNEW, not_busy, &Form1::mnuSearchNew_Click},
      {ID_MNUSEARCHLIST, list_not_empty, &Form1::mnuSearchList_Click},
      {ID_MNUSEARCHFILE, row_selected, &Form1::mnuSearchFile_Click},
  };
  return table;
}

/// What the rules of the commands ask about, as it is at this moment.
WindowState Form1::window_state() const {
  const int selected = ListView2.selected();
  WindowState state;
  state.searching = searching();
  state.finding = viewer_.finding();
  state.rows = results_.file_count();
  state.row_selected = selected >= 0;
  state.viewing = viewer_.viewing();
  state.row_viewed = state.viewing && selected == results_.viewed_index;
  state.text_selected = viewer_.text_selected();
  state.text_marked = state.viewing && Text1.selection_length() > 0;
  state.hyper_current = hyper_.hyper_state() == HyperFind::hyper_current;
  state.user_restored = hyper_.hyper_state() == HyperFind::user_restored;
  return state;
}

bool Form1::can_use(int id) const {
  const auto command = std::ranges::find(commands(), id, &Command::id);
  return command != commands().end() && is_enabled(command->rule, window_state());
}

void Form1::run_command(const Command& command) {
  if (ListView2.editing_label()) {
    // The name that is being typed is taken first. That sorts the list, and the command must find
    // its rows where they are then, not after a question that it asks.
    move_focus(ListView2.handle());
    PostMessageW(handle(), WM_COMMAND, static_cast<WPARAM>(command.id), 0);
    return;
  }
  if (is_enabled(command.rule, window_state())) (this->*command.run)();
}

/// Runs a command; returns false when it cannot be used now.
bool Form1::run_command(int id) {
  if (!can_use(id)) return false;
  SendMessageW(handle(), WM_COMMAND, static_cast<WPARAM>(id), 0);
  return true;
}

void Form1::enable(const Command& command, bool on) {
  const HWND button = item(command.id);
  if (button == nullptr) {
    // The menu that lacks the entry ignores the call.
    win32::enable_entry(GetMenu(handle()), command.id, on);
    win32::enable_entry(quick_menu_.handle(), command.id, on);
    return;
  }
  if (!on) leave(button);
  EnableWindow(button, on);
}

/// Shows which commands can be used; each is asked again when it comes. Called whenever the rows,
/// their selection, the viewer or the run may have changed.
void Form1::refresh_commands() {
  show_hyper_captions();
  if (!searching()) cmdSearch.set_text(viewer_.finding() ? "Stop" : "Search");
  const WindowState state = window_state();
  for (const Command& command : commands()) enable(command, is_enabled(command.rule, state));
  win32::enable_entry(GetMenu(handle()), ID_MNUMORE,
                      is_enabled(EnabledRule::list_not_empty, state));
  show_note();
  keep_focus();
  if (pending_.any()) PostMessageW(handle(), message_pending, 0, 0);
}

void Form1::show_note() {
  const Note note = note_.current(on_view());
  if (note.links().empty()) leave(lblNote.handle());
  lblNote.show(note, !busy());
}

void Form1::request(bool Pending::*what) {
  pending_.*what = true;
  PostMessageW(handle(), message_pending, 0, 0);
}

/// Called again whenever the window may have become enabled and idle, until nothing waits.
void Form1::serve_pending() {
  // A new row is not kept waiting by the search for a hit in the file before.
  if (pending_.view && viewer_.finding()) {
    const int row = ListView2.focused_selected();
    if (row < 0 || row == results_.viewed_index) pending_.view = false;
    if (pending_.view) viewer_.stop();
  }
  if (!IsWindowEnabled(handle()) || busy() || ListView2.editing_label()) return;
  if (pending_.close) {
    Form_Unload();
    return;
  }
  const SortKey key = sort_menu_.sort_type();
  if (std::exchange(pending_.sort, false) && key != SortKey::none) {
    mnuSort_Click(static_cast<int>(key));
  }
  if (std::exchange(pending_.view, false)) view_selected_row();
}

HWND Form1::focus_target() const {
  const bool list_is_of_use = results_.file_count() > 0 && !searching();
  return list_is_of_use ? ListView2.handle() : cmdSearch.handle();
}

void Form1::leave(HWND control) {
  if (GetFocus() == control) move_focus(focus_target());
}

/// Moves the focus on from nowhere, where keys would be lost: a control may also have been disabled
/// while a dialog had the focus.
void Form1::keep_focus() {
  if (GetActiveWindow() != handle() || !IsWindowVisible(handle()) || IsIconic(handle())) return;
  const HWND focus = GetFocus();
  const bool nowhere = focus == nullptr || focus == handle() || !IsWindowEnabled(focus);
  const bool on_idle_list = focus == ListView2.handle() && focus != focus_target();
  if (nowhere || on_idle_list) move_focus(focus_target());
}

}  // namespace tallowmere
