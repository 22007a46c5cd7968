#include <optional>

#include "app/Form1.h"
#include "app/resource.h"
#include "app/sorting_notice.h"
#include "dialogs/frmUnread.h"
#include "shell/run_texts.h"
#include "win32/hourglass.h"

namespace tallowmere {

void Form1::cmdExit_Click() {
  Form_Unload();
}

void Form1::mnuExit_Click() {
  if (exit_copies_) {
    mnuCopyFilename_Click();
  } else {
    Form_Unload();
  }
}

void Form1::mnuStop_Click() {
  run_.stop();
  viewer_.stop();
}

void Form1::show_toggles() {
  const HMENU menu = GetMenu(handle());
  win32::check_entry(menu, ID_MNUSOUNDON, shell_.sound_on);
  win32::check_entry(menu, ID_MNUMINIMIZEON, shell_.minimize_on);
  win32::check_entry(menu, ID_MNUFINDONLAUNCH, shell_.find_on_launch);
  win32::check_entry(menu, ID_MNUUNICODE, search_.unicode_text);
}

/// Switches how files are read; the file on view shows at once as it is read now.
void Form1::mnuUnicode_Click() {
  search_.unicode_text = !search_.unicode_text;
  show_toggles();
  viewer_.criteria_loaded();
  if (viewer_.viewing()) viewed_file_changed(ViewedFile::rewritten);
}

void Form1::lblNote_Click(NoteLink link) {
  if (!note_.current(on_view()).has(link)) return;
  if (link == NoteLink::show_unread) return frmUnread(handle(), run_.unread()).show();
  search_.unicode_text = true;
  show_toggles();
  run_.repeat();
}

void Form1::mnuSelectAll_Click() {
  const win32::Hourglass hourglass;
  ListView2.select_all();
}

void Form1::mnuSort_Click(int index) {
  const SortAction action = choose_sort(sort_menu_, results_, static_cast<SortKey>(index));
  if (action != SortAction::none) sort_rows(action);
  show_sort_order();
}

void Form1::sort_rows(SortAction action) {
  const int selected = ListView2.selected();
  std::string selected_path;
  if (selected >= 0) {
    selected_path = results_.indexed_filename(static_cast<std::size_t>(selected));
  }
  {
    std::optional<SortingNotice> notice;
    if (results_.file_count() > quick_sort_rows) notice.emplace(Label1, Label2);
    apply_sort(sort_menu_, results_, action);
    ListView2.show_all();
  }
  if (selected >= 0) {
    select_row(static_cast<int>(results_.find_result_index(selected_path)));
  }
  refresh_commands();
}

void Form1::show_sort_order() {
  for (int i = 0; i < sort_key_count; ++i) {
    win32::check_entry(GetMenu(handle()), ID_MNUSORT + i,
                       sort_menu_.is_checked(static_cast<SortKey>(i)));
  }
  ListView2.show_order(sort_menu_.sort_type(), results_.sort_descending);
}

/// Sorts as the menu does: a name that is being typed into a row is taken first.
void Form1::ListView2_ColumnClick(int column) {
  SendMessageW(handle(), WM_COMMAND, static_cast<WPARAM>(ID_MNUSORT + column), 0);
}

/// Plays a sound file. For another one, the first double click shows the file, further ones step
/// through its hits.
void Form1::ListView2_DblClick() {
  const int row = ListView2.selected();
  if (busy() || !IsWindowEnabled(handle()) || row < 0) return;
  const auto index = static_cast<std::size_t>(row);
  if (WindowSounds::is_sound_file(results_.record(index).filename)) {
    sounds_.play(results_.indexed_filename(index));
  } else if (can_use(IDC_CMDVIEW)) {
    cmdView_Click();
  } else if (can_use(IDC_CMDFINDNEXT)) {
    cmdFindNext_Click();
  }
}

/// An empty list, and any list during a search, hands the focus on.
void Form1::ListView2_GotFocus() {
  focus_marker_.list_got_focus();
  if (!searching() && ListView2.row_count() > 0) return;
  const bool backwards = GetKeyState(VK_SHIFT) < 0;
  PostMessageW(handle(), WM_NEXTDLGCTL, backwards, FALSE);
}

/// `position` is on the screen, -1 when the menu key was pressed.
void Form1::show_context_menu(HWND over, LPARAM position) {
  if (busy() || !IsWindowEnabled(handle())) return;
  if (over == ListView2.handle()) {
    ListView2_MouseUp(position);
    return;
  }
  const bool by_key = position == -1;
  const POINT at = by_key ? Text1.caret_point() : win32::point_of(position);
  refresh_commands();
  if (by_key || Text1.covers(at)) win32::pop_up(quick_menu_.handle(), handle(), at);
}

void Form1::ListView2_MouseUp(LPARAM position) {
  if (ListView2.selected_count() == 0) return;
  pop_up_file_menu(position == -1 ? ListView2.corner() : win32::point_of(position));
}

void Form1::pop_up_file_menu(POINT at) {
  // A name that is being typed is taken now: a command would be served after it, when the last
  // entry says something else again.
  if (ListView2.editing_label()) move_focus(ListView2.handle());
  const HMENU menu = GetMenu(handle());
  win32::set_entry_text(menu, ID_MNUEXIT, "C&opy Name");
  exit_copies_ = true;
  // The choice is served while the entry says what it does.
  const int chosen = win32::choose_from(GetSubMenu(menu, 0), handle(), at);
  if (chosen != 0) SendMessageW(handle(), WM_COMMAND, static_cast<WPARAM>(chosen), 0);
  exit_copies_ = false;
  if (handle() != nullptr) win32::set_entry_text(menu, ID_MNUEXIT, "E&xit");
}

}  // namespace tallowmere
