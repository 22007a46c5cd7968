#include "app/search_run.h"

#include <new>
#include <utility>
#include <vector>

#include "app/window_search_host.h"
#include "engine/search_page.h"
#include "shell/run_texts.h"
#include "win32/message_loop.h"

namespace tallowmere {

namespace {

FoundFile found_file(const FileRecord& record) {
  return {record.filepath, record.filename, {record.filedate, record.filesize}};
}

/// The threads of a run; the window's own one is not kept waiting by a disk.
ThreadUse threads() {
  return {machine_threads(), true};
}

/// Ends the running state, however the run ends.
struct RunEnd {
  bool& running;
  ~RunEnd() { running = false; }
};

}  // namespace

SearchRun::SearchRun(Window window, Services services)
    : window_(std::move(window)),
      services_(std::move(services)),
      results_(services_.results),
      viewer_(services_.viewer) {}

void SearchRun::search_new(const CriteriaInput& input) {
  load(SearchKind::new_search, input);
  chain_.new_search(input.criteria);
  search_files([](FileSearch& search) { search.search_files(); });
}

void SearchRun::search_list(const CriteriaInput& input) {
  chain_.narrowed(input.criteria);
  search_listed(input, results_.take_records());
}

void SearchRun::search_listed(const CriteriaInput& input, std::vector<FileRecord> records) {
  load(SearchKind::list_search, input);
  last_.listed = std::move(records);
  search_files([&listed = last_.listed](FileSearch& search) {
    search.SearchListboxFiles(listed.size(), [&](std::size_t i) { return found_file(listed[i]); });
  });
}

/// Drops what the dialogs have changed since that run: the search is to be the same.
void SearchRun::repeat() {
  last_.search.unicode_text = services_.search.unicode_text;
  services_.search = last_.search;
  const CriteriaInput input = current_criteria(services_.search);
  if (!can_search(input)) return;
  switch (last_.kind) {
    case SearchKind::new_search:
      return search_new(input);
    case SearchKind::list_search:
      return search_listed(input, std::move(last_.listed));
    case SearchKind::file_search:
      const std::size_t row = results_.find_result_index(last_.path);
      if (row == results_.file_count()) return;
      viewer_.clear();  // what shows was read another way, and stays where nothing matches
      search_file(input, row);
  }
}

bool SearchRun::can_search(const CriteriaInput& input) {
  load_search_criteria(services_.search, input);
  viewer_.criteria_loaded();
  const SearchCriteria& search = services_.search;
  if (!search.unicode_text || SearchPage(search, services_.page).fits()) return true;
  window_.message(std::string(too_many_characters_text) +
                      "\n\nShorten them, or untick Unicode Text in the Search menu.",
                  "Cannot Search");
  return false;
}

void SearchRun::load(SearchKind kind, const CriteriaInput& input) {
  load_search_criteria(services_.search, input);
  last_ = {kind, services_.search, {}, {}};
  viewer_.criteria_loaded();
}

/// Makes a run that fills a new list.
void SearchRun::search_files(const std::function<void(FileSearch&)>& test) {
  const RunEnd end{running_};
  viewer_.clear();
  results_.setup_new_list();
  window_.ListView2.show_none();
  prepare_to_search();
  if (services_.shell.minimize_on && IsWindowVisible(window_.form.handle())) {
    ShowWindow(window_.form.handle(), SW_MINIMIZE);
  }
  WindowSearchHost host(window_.form.handle(), results_, stop_, true);
  FileSearch search(services_.search, services_.page, services_.files, services_.clock, host,
                    threads());
  host.set_progress([&] { show_progress(search); });
  go_through([&] { test(search); });
  if (!window_.closing()) {
    search_timing(search.stopped());
    show_found_files(search);
    tell_outcome(search);
  }
  post_search_restore();
  if (window_.closing()) return;
  bring_to_front();
  focus_found_files();
  if (services_.shell.sound_on) services_.sounds.search_ended();
}

void SearchRun::search_file(const CriteriaInput& input, std::size_t row) {
  const RunEnd end{running_};
  load(SearchKind::file_search, input);
  last_.path = results_.indexed_filename(row);
  prepare_to_search();
  WindowSearchHost host(window_.form.handle(), results_, stop_, false);
  FileSearch search(services_.search, services_.page, services_.files, services_.clock, host,
                    threads());
  bool matches = false;
  go_through([&] { matches = search_selected_file(search, row); });
  if (!window_.closing()) {
    const bool stopped = search_timing(search.stopped());
    matches = matches && !stopped;
    results_.resort_pending = true;
    window_.Label1.set_text(stopped ? "" : selected_file_text(matches));
    tell_outcome(search);
  }
  post_search_restore();
  if (!window_.closing()) show_selected_file(matches);
}

/// Tests the file; brings it into the viewer first when another one is there.
bool SearchRun::search_selected_file(FileSearch& search, std::size_t row) {
  const bool on_view = viewer_.viewing() && std::cmp_equal(results_.viewed_index, row);
  if (!on_view && !viewer_.open(row)) return false;
  const FileRecord record = results_.record(static_cast<std::size_t>(results_.viewed_index));
  return search.search_selected_file(record.filepath, record.filename);
}

/// Begins the searching state, in which only Stop works.
void SearchRun::prepare_to_search() {
  stop_ = false;
  running_ = true;
  window_.note.clear_run();
  window_.Label1.set_text(searching_text);
  window_.tips.set(window_.Label1.handle(), "");
  window_.Label2.set_text("");
  window_.cmdSearch.set_text("Stop");
  window_.state_changed();
  UpdateWindow(window_.form.handle());
  window_.Label1.repaint();
  window_.Label2.repaint();
  started_ = services_.clock.seconds_since_midnight();
}

/// Searches; when memory runs out, what was found so far is kept.
void SearchRun::go_through(const std::function<void()>& search) {
  try {
    search();
  } catch (const std::bad_alloc&) {
    stop_ = true;
    window_.message(
        "There is not enough memory to continue the search. The files found so far stay in the "
        "list. Close other programs and search again.",
        search_stopped_text);
  }
}

void SearchRun::show_progress(const FileSearch& search) {
  window_.note.run_goes_on(services_.clock.seconds_since_midnight() - started_,
                           search.current_folder());
  window_.show_note();
  window_.ListView2.show_more();
  window_.Label2.set_text(
      count_text(static_cast<std::int64_t>(results_.file_count()), search.files_searched()));
}

/// Ends the timed part of a run; returns true when it was stopped. A Stop still waiting counts.
bool SearchRun::search_timing(bool stopped) {
  const double elapsed = elapsed_seconds(started_, services_.clock.seconds_since_midnight());
  window_.note.clear_run();
  window_.show_note();
  window_.cmdSearch.set_text("Search");
  window_.cmdSearch.repaint();
  win32::pump_pending();
  stopped = stopped || stop_;
  window_.Label2.set_text(timing_text(stopped, elapsed));
  return stopped;
}

/// Notes how the list has come about, what the run may have missed and whether it can be repeated.
void SearchRun::tell_outcome(FileSearch& search) {
  unread_ = search.take_unread();
  window_.tips.set(window_.Label1.handle(), count_tool_tip(chain_.text(), unread_));
  const SearchCriteria& criteria = services_.search;
  const bool makes_list = last_.kind != SearchKind::file_search;
  window_.note.run_ended(
      {.unicode_text = criteria.unicode_text,
       .code_page_lacks = !to_page_text(criteria.criteria, services_.page).representable,
       .read_as_bytes = search.read_as_bytes(),
       .unread = unread_.size(),
       .nothing_listed = makes_list && results_.file_count() == 0,
       .searched = search.files_searched(),
       .left_out = search.left_out()});
  if (!window_.note.current({}).has(NoteLink::read_unicode_text)) last_.listed = {};
}

/// Sorts the files found, while events are served, and fills the list with them.
void SearchRun::show_found_files(const FileSearch& search) {
  results_.matched_count = search.files_matched();
  if (results_.matched_count > quick_run_matches) {
    window_.Label1.set_text(sorting_found_text);
    window_.Label1.repaint();
  }
  EventGate events;
  sort_after_search(services_.sort_menu, results_, [&events] { events.serve(); });
  window_.ListView2.show_all();
  window_.show_sort_order();
  files_searched_ = search.files_searched();
  window_.Label1.set_text(
      finished_text(static_cast<std::int64_t>(results_.file_count()), files_searched_));
}

/// Ends a search of the file in the viewer: its hits are those of the new criteria now.
void SearchRun::show_selected_file(bool matches) {
  if (!viewer_.viewing()) return;
  if (matches) {
    viewer_.show_first_hit(static_cast<std::size_t>(results_.viewed_index));
  } else {
    viewer_.show_if_pending();
  }
  if (window_.Text1.enabled()) window_.form.move_focus(window_.Text1.handle());
}

void SearchRun::post_search_restore() {
  running_ = false;
  stop_ = false;
  window_.state_changed();
  SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

/// Brings the window to the front: it may have been minimised meanwhile, or another one be there.
/// Where the system does not allow that, the button on the task bar flashes.
void SearchRun::bring_to_front() {
  if (!IsWindowVisible(window_.form.handle())) return;
  if (IsIconic(window_.form.handle())) ShowWindow(window_.form.handle(), SW_RESTORE);
  SetForegroundWindow(window_.form.handle());
}

/// Moves the focus to the list. Its first row is only marked: which file shows is the user's
/// choice.
void SearchRun::focus_found_files() {
  if (results_.file_count() == 0) return;
  window_.ListView2.mark(0);
  if (IsWindowVisible(window_.form.handle())) {
    window_.form.move_focus(window_.ListView2.handle());
  }
}

}  // namespace tallowmere
