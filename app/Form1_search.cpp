#include "app/Form1.h"
#include "dialogs/frmNarrow.h"
#include "dialogs/frmSearchFor.h"

namespace tallowmere {

void Form1::cmdSearch_Click() {
  if (busy()) {
    mnuStop_Click();
    if (searching()) cmdSearch.set_text("Search");
    return;
  }
  SearchKind kind = SearchKind::new_search;
  if (results_.file_count() > 0 && !choose_kind(kind)) return;
  start_run(kind);
}

void Form1::mnuSearchNew_Click() {
  search_kind_ = SearchKind::new_search;
  start_run(search_kind_);
}

void Form1::mnuSearchList_Click() {
  search_kind_ = SearchKind::list_search;
  start_run(search_kind_);
}

void Form1::mnuSearchFile_Click() {
  search_kind_ = SearchKind::file_search;
  start_run(search_kind_);
}

bool Form1::choose_kind(SearchKind& kind) {
  const int selected = ListView2.selected();
  frmNarrow& prompt = win32::made(frmNarrow_, handle(), dialog_cancelled_);
  if (!prompt.ask(search_kind_, selected, selected >= 0)) return false;
  kind = search_kind_;
  return true;
}

void Form1::start_run(SearchKind kind) {
  if (kind == SearchKind::file_search) set_list2_index();
  frmSearchFor& dialog =
      win32::made(frmSearchFor_, handle(), dialog_context_, shell_.recent_searches);
  note_.folder_taken("");  // the dialog shows it
  show_note();
  if (!dialog.ask(kind)) return;
  hyper_.user_searched();
  run_search(kind, dialog.input());
}

void Form1::run_search(SearchKind kind, const CriteriaInput& input) {
  if (!run_.can_search(input)) return;
  const int row = ListView2.selected();
  if (kind == SearchKind::file_search && row < 0) return;
  shell_.recent_searches.begun(search_);
  switch (kind) {
    case SearchKind::new_search:
      shell_.recent_folders.add(search_.path);
      return run_.search_new(input);
    case SearchKind::list_search:
      return run_.search_list(input);
    case SearchKind::file_search:
      return run_.search_file(input, static_cast<std::size_t>(row));
  }
}

SearchRun::Window Form1::run_window() {
  return {*this,
          ListView2,
          Text1,
          cmdSearch,
          Label1,
          Label2,
          tips_,
          note_,
          [this] { refresh_commands(); },
          [this] { return pending_.close; },
          [this] { show_sort_order(); },
          [this] { show_note(); },
          [this](std::string_view prompt, std::string_view title) { message(prompt, title); }};
}

SearchRun::Services Form1::run_services() {
  return {search_, services_.files, clock_, services_.page, results_,
          viewer_, sort_menu_,      shell_, sounds_};
}

}  // namespace tallowmere
