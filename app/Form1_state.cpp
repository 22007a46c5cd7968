#include <utility>

#include "app/Form1.h"
#include "app/command_controls.h"
#include "app/resource.h"

namespace tallowmere {

/// What the rules of the commands ask about, as it is at this moment.
WindowState Form1::window_state() const {
  const int selected = ListView2.selected();
  WindowState state;
  state.searching = searching_;
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

bool Form1::can_use(int command) const {
  return command_enabled(command, window_state());
}

/// Only paints: whether a command can be used is asked when it comes. Called whenever the rows,
/// their selection, the viewer or the run may have changed.
void Form1::refresh_commands() {
  show_hyper_captions();
  if (!searching_) cmdSearch.set_text(viewer_.finding() ? "Stop" : "Search");
  enable_commands(handle(), quick_menu_.handle(), window_state(),
                  [this](HWND control) { leave(control); });
  keep_focus();
  if (pending_.any()) PostMessageW(handle(), message_pending, 0, 0);
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
  const bool list_is_of_use = results_.file_count() > 0 && !searching_;
  return list_is_of_use ? ListView2.handle() : cmdSearch.handle();
}

void Form1::leave(HWND control) {
  if (GetFocus() == control) move_focus(focus_target());
}

/// A control may also have been disabled while a dialog had the focus, which then came back to
/// nowhere: keys would be lost.
void Form1::keep_focus() {
  if (GetActiveWindow() != handle() || !IsWindowVisible(handle()) || IsIconic(handle())) return;
  const HWND focus = GetFocus();
  const bool nowhere = focus == nullptr || focus == handle() || !IsWindowEnabled(focus);
  const bool on_idle_list = focus == ListView2.handle() && focus != focus_target();
  if (nowhere || on_idle_list) move_focus(focus_target());
}

}  // namespace tallowmere
