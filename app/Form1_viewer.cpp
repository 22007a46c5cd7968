#include <utility>

#include "app/Form1.h"
#include "app/resource.h"
#include "dialogs/frmFonts.h"
#include "shell/file_info.h"
#include "win32/text.h"
#include "win32/user_locale.h"

namespace tallowmere {

ViewerPane::Window Form1::viewer_window() {
  return {handle(),
          [this] { refresh_commands(); },
          [this](const FileRecord* record) { show_file(record); },
          [this] { row_corrected(); },
          [this](std::size_t row) { select_row(static_cast<int>(row)); },
          [this] { return searching(); },
          [this] { show_note(); }};
}

void Form1::wire_viewer() {
  Text1.before_disable = [this] {
    leave(Text1.handle());
    leave(Text1.VScroll1.handle());
  };
  Text1.wheel_zoomed = [this](bool larger) {
    run_command(larger ? ID_MNULARGERFONT : ID_MNUSMALLERFONT);
  };
  command(IDC_TEXT1, EN_SETFOCUS, [this] { focus_marker_.viewer_got_focus(); });
  command(IDC_TEXT1, EN_KILLFOCUS, [this] { focus_marker_.viewer_lost_focus(); });
}

void Form1::show_file(const FileRecord* record) {
  SetWindowTextW(handle(), win32::wide(window_caption(record ? record->filename : "")).c_str());
  lblFileInfo.set_text(record
                           ? file_info_text(record->filesize, win32::thousands_separator(),
                                            win32::general_date(clock_.to_local(record->filedate)))
                           : "");
  show_note();  // a message may come before the step ends
}

/// The facts of a row have changed on disk: a list by date or size is sorted again.
void Form1::row_corrected() {
  const SortKey key = sort_menu_.sort_type();
  if (key == SortKey::date || key == SortKey::size) mnuSort_Click(static_cast<int>(key));
  ListView2.repaint();
}

/// Only the user's own choice of a row shows its file, and only the focused one's.
void Form1::ListView2_ItemClick(const NMLISTVIEW& change) {
  refresh_commands();
  const bool gained = (change.uNewState & ~change.uOldState & LVIS_SELECTED) != 0;
  if (gained && !selecting_ && !searching()) request(&Pending::view);
}

void Form1::view_selected_row() {
  const int row = ListView2.focused_selected();
  if (row < 0 || (viewer_.viewing() && row == results_.viewed_index)) return;
  viewer_.show_first_hit(static_cast<std::size_t>(row));
}

/// The list's selection goes back to the viewed file when the focus came from the viewer.
void Form1::set_list2_index() {
  if (results_.viewed_index < 0 || results_.viewed_index == ListView2.selected()) return;
  if (focus_marker_.from_viewer()) select_row(static_cast<int>(results_.viewed_index));
}

void Form1::select_row(int row) {
  const bool before = std::exchange(selecting_, true);
  ListView2.select_only(row);
  selecting_ = before;
}

void Form1::cmdView_Click() {
  const int row = ListView2.selected();
  if (row < 0) return;
  viewer_.show_first_hit(static_cast<std::size_t>(row));
  if (Text1.enabled()) move_focus(Text1.handle());
}

void Form1::cmdFindNext_Click() {
  viewer_.find_next();
  move_focus(viewer_.viewing() ? Text1.handle() : ListView2.handle());
}

void Form1::cmdFindPrev_Click() {
  viewer_.find_prev();
  move_focus(viewer_.viewing() ? Text1.handle() : ListView2.handle());
}

void Form1::cmdHyper_Click() {
  if (Text1.enabled()) move_focus(Text1.handle());
  if (hyper_.restores_hyper(viewer_.text_selected())) {
    cmdRestore_Click();
    return;
  }
  const std::string text = viewer_.selected_text();
  if (!text.empty()) do_hyper_search(hyper_.find(text, current_criteria(search_)));
}

void Form1::cmdRestore_Click() {
  if (Text1.enabled()) move_focus(Text1.handle());
  do_hyper_search(hyper_.restore(current_criteria(search_)));
}

void Form1::do_hyper_search(const CriteriaInput& input) {
  select_row(static_cast<int>(results_.viewed_index));
  viewer_.deselect();
  run_search(SearchKind::file_search, input);
}

void Form1::show_hyper_captions() {
  const std::string_view caption = hyper_.caption(viewer_.text_selected());
  tips_.set(cmdHyper.handle(), hyper_.tool_tip(viewer_.text_selected()));
  if (caption == std::exchange(hyper_caption_, caption)) return;
  cmdHyper.set_text(caption);
  win32::set_entry_text(GetMenu(handle()), ID_MNUHYPER, caption);
  win32::set_entry_text(quick_menu_.handle(), ID_MNUQHYPER, caption);
}

void Form1::mnuFontStyle_Click() {
  if (win32::made(frmFonts_, handle()).ask(shell_.font_name, shell_.font_size)) {
    viewer_font_.change();
  }
}

}  // namespace tallowmere
