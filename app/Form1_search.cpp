#include <new>
#include <string>
#include <utility>
#include <vector>

#include "app/Form1.h"
#include "app/resource.h"
#include "app/window_search_host.h"
#include "dialogs/frmNarrow.h"
#include "dialogs/frmSearchFor.h"
#include "shell/run_texts.h"
#include "win32/message_loop.h"
#include "win32/sound.h"

namespace tallowmere {

namespace {

constexpr char end_sound[] = "s_done.wav";  // in the program's folder

FoundFile found_file(const FileRecord& record) {
  return {record.filepath, record.filename, {record.filedate, record.filesize}};
}

}  // namespace

void Form1::cmdSearch_Click() {
  if (viewer_.finding()) {
    viewer_.stop();
    return;
  }
  if (searching_) {
    stop_ = true;
    cmdSearch.set_text("Search");
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
  if (!narrow_prompt().ask(search_kind_, selected, selected >= 0)) return false;
  kind = search_kind_;
  return true;
}

void Form1::start_run(SearchKind kind) {
  if (kind == SearchKind::file_search) set_list2_index();
  if (!search_dialog().ask(kind)) return;
  hyper_.user_searched();
  run_search(kind, search_dialog().input());
}

void Form1::run_search(SearchKind kind, const CriteriaInput& input) {
  if (kind == SearchKind::file_search && ListView2.selected() < 0) return;
  load_search_criteria(search_, input, services_.page);
  viewer_.criteria_loaded();
  std::vector<FileRecord> listed;
  if (kind == SearchKind::list_search) listed = results_.take_records();
  if (kind != SearchKind::file_search) {
    viewer_.clear();
    results_.setup_new_list();
    ListView2.show_none();
  }
  struct RunEnd {
    Form1& form;
    ~RunEnd() { form.searching_ = form.stop_ = false; }
  } const end{*this};
  prepare_to_search(kind);

  WindowSearchHost host(handle(), results_, stop_);
  FileSearch search(search_, services_.page, services_.files, clock_, host);
  host.set_progress([&] {
    if (kind != SearchKind::file_search) show_progress(search);
  });
  bool selected_matches = false;
  try {
    switch (kind) {
      case SearchKind::new_search:
        search.search_files();
        break;
      case SearchKind::list_search:
        search.SearchListboxFiles(listed.size(),
                                  [&](std::size_t i) { return found_file(listed[i]); });
        break;
      case SearchKind::file_search:
        selected_matches = search_selected_file(search);
        break;
    }
  } catch (const std::bad_alloc&) {
    stop_ = true;
    message("There is not enough memory to search on. The files found so far are kept.",
            "Search Stopped");
  }
  finish_run(kind, search, selected_matches);
}

/// Brings the file into the viewer first when another one is there.
bool Form1::search_selected_file(FileSearch& search) {
  const int row = ListView2.selected();
  const bool on_view = viewer_.viewing() && results_.viewed_index == row;
  if (!on_view && !viewer_.open(static_cast<std::size_t>(row))) return false;
  const FileRecord record = results_.record(static_cast<std::size_t>(results_.viewed_index));
  return search.search_selected_file(record.filepath, record.filename);
}

/// The searching state: only Stop works.
void Form1::prepare_to_search(SearchKind kind) {
  stop_ = false;
  searching_ = true;
  Label1.set_text(searching_text);
  tips_.set(Label1.handle(), "");
  Label2.set_text("");
  cmdSearch.set_text("Stop");
  refresh_commands();
  UpdateWindow(handle());
  Label1.repaint();
  Label2.repaint();
  if (shell_.minimize_on && kind != SearchKind::file_search && IsWindowVisible(handle())) {
    ShowWindow(handle(), SW_MINIMIZE);
  }
  started_ = clock_.seconds_since_midnight();
}

void Form1::show_progress(const FileSearch& search) {
  ListView2.show_more();
  Label2.set_text(
      count_text(static_cast<std::int64_t>(results_.file_count()), search.files_searched()));
}

void Form1::finish_run(SearchKind kind, const FileSearch& search, bool selected_matches) {
  if (!pending_.close) {
    const bool stopped = search_timing(search.stopped());
    if (kind == SearchKind::file_search) {
      results_.resort_pending = true;
      Label1.set_text(stopped ? "" : selected_file_text(selected_matches));
    } else {
      show_found_files(search);
    }
    tips_.set(Label1.handle(), unread_tool_tip(search.unread()));
  }
  post_search_restore();
  if (pending_.close) return;  // served now
  if (kind == SearchKind::file_search) {
    show_selected_file(selected_matches && !search.stopped());
  } else {
    bring_to_front();
    focus_found_files();
    play_end_sound();
  }
}

/// The keyboard goes on in the list. Its first row is only marked: which file shows is the user's
/// choice.
void Form1::focus_found_files() {
  if (results_.file_count() == 0) return;
  ListView2.mark(0);
  if (IsWindowVisible(handle())) move_focus(ListView2.handle());
}

/// The end of a search of the file in the viewer: its hits are those of the new criteria now.
void Form1::show_selected_file(bool matches) {
  if (!viewer_.viewing()) return;
  if (matches) {
    viewer_.show_first_hit(static_cast<std::size_t>(results_.viewed_index));
  } else {
    viewer_.show_if_pending();
  }
  if (Text1.enabled()) move_focus(Text1.handle());
}

/// The end of the timed part of a run. A Stop that was still waiting counts; true when stopped.
bool Form1::search_timing(bool stopped) {
  const double elapsed = elapsed_seconds(started_, clock_.seconds_since_midnight());
  cmdSearch.set_text("Search");
  cmdSearch.repaint();
  win32::pump_pending();
  stopped = stopped || stop_;
  Label2.set_text(timing_text(stopped, elapsed));
  return stopped;
}

/// Sorts the files found, while events are served, and fills the list with them.
void Form1::show_found_files(const FileSearch& search) {
  results_.matched_count = search.files_matched();
  if (results_.matched_count > quick_run_matches) {
    Label1.set_text(sorting_found_text);
    Label1.repaint();
  }
  TickGate events(20);
  sort_after_search(sort_menu_, results_, [&events] {
    if (events.due(GetTickCount64())) win32::pump_pending();
  });
  ListView2.show_all();
  show_sort_order();
  files_searched_ = search.files_searched();
  Label1.set_text(finished_text(static_cast<std::int64_t>(results_.file_count()), files_searched_));
}

void Form1::post_search_restore() {
  searching_ = false;
  stop_ = false;
  refresh_commands();
  SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

/// The window may have been minimised meanwhile, or another one be in front.
void Form1::bring_to_front() {
  if (!IsWindowVisible(handle())) return;
  if (IsIconic(handle())) ShowWindow(handle(), SW_RESTORE);
  SetForegroundWindow(handle());
}

void Form1::play_end_sound() const {
  if (!shell_.sound_on) return;
  if (has_wave_output_) {
    win32::play_sound(services_.program_folder + end_sound);
  } else {
    win32::beep();
  }
}

// The dialogs are made when they are first needed and kept with their values.

frmNarrow& Form1::narrow_prompt() {
  if (!frmNarrow_) frmNarrow_ = std::make_unique<frmNarrow>(handle(), dialog_cancelled_);
  return *frmNarrow_;
}

frmSearchFor& Form1::search_dialog() {
  if (!frmSearchFor_) frmSearchFor_ = std::make_unique<frmSearchFor>(handle(), dialog_context_);
  return *frmSearchFor_;
}

}  // namespace tallowmere
