#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/result_view.h"
#include "app/viewer_box.h"
#include "app/viewer_pane.h"
#include "app/window_sounds.h"
#include "engine/code_page.h"
#include "engine/date_time.h"
#include "engine/file_search.h"
#include "engine/search_criteria.h"
#include "results/result_list.h"
#include "results/sort_command.h"
#include "shell/search_chain.h"
#include "shell/search_kind.h"
#include "shell/settings.h"
#include "shell/window_note.h"
#include "win32/controls.h"
#include "win32/form.h"
#include "win32/tooltip.h"

namespace tallowmere {

/// The search runs of the main window, one at a time: how they start, what shows while they go on
/// and how they end. A run serves events; running() is then true, and only Stop works.
class SearchRun {
 public:
  /// Where a run shows itself, and what the main window does for it.
  struct Window {
    win32::Form& form;
    const ResultView& ListView2;
    const ViewerBox& Text1;
    const win32::Button& cmdSearch;
    const win32::Label& Label1;
    const win32::Label& Label2;
    win32::ToolTip& tips;
    WindowNote& note;
    std::function<void()> state_changed;  ///< which commands can be used may be another now
    std::function<bool()> closing;        ///< the window was closed and goes when the run has ended
    std::function<void()> show_sort_order;
    std::function<void()> show_note;
    std::function<void(std::string_view prompt, std::string_view title)> message;
  };

  /// What a run works with. All of it outlives the runs.
  struct Services {
    SearchCriteria& search;
    const FileSystem& files;
    const Clock& clock;
    const CodePage& page;
    ResultList& results;
    ViewerPane& viewer;
    const SortMenu& sort_menu;
    const ShellState& shell;
    const WindowSounds& sounds;
  };

  SearchRun(Window window, Services services);

  /// Loads the criteria, which the dialog then shows again in any case. Returns false, after a
  /// message, when they hold more different characters than can be searched for in Unicode text.
  bool can_search(const CriteriaInput& input);
  /// Searches the folders, or the files listed, and lists those that match. Returns at the end.
  void search_new(const CriteriaInput& input);
  void search_list(const CriteriaInput& input);
  /// Tests the file of this row, which comes into the viewer; the list stays.
  void search_file(const CriteriaInput& input, std::size_t row);

  /// Makes the last run again with the criteria and the list that it had; files are read as they
  /// would be now. A file that has left the list meanwhile is not searched.
  void repeat();

  bool running() const { return running_; }
  /// Ends the run under way, from inside one of its yields.
  void stop() { stop_ = true; }
  /// How many files the run that made the list has searched.
  std::int64_t files_searched() const { return files_searched_; }
  /// What the last run that has ended could not read.
  const std::vector<UnreadFile>& unread() const { return unread_; }

 private:
  /// What it takes to make a run again.
  struct Made {
    SearchKind kind = SearchKind::new_search;
    SearchCriteria search;
    std::vector<FileRecord> listed;  ///< that a list search went through
    std::string path;                ///< of the file that a file search tested
  };

  void load(SearchKind kind, const CriteriaInput& input);
  void search_listed(const CriteriaInput& input, std::vector<FileRecord> listed);
  void search_files(const std::function<void(FileSearch&)>& search);
  bool search_selected_file(FileSearch& search, std::size_t row);
  void prepare_to_search();
  void go_through(const std::function<void()>& search);
  void tell_outcome(FileSearch& search);
  void show_progress(const FileSearch& search);
  bool search_timing(bool stopped);
  void show_found_files(const FileSearch& search);
  void show_selected_file(bool matches);
  void post_search_restore();
  void bring_to_front();
  void focus_found_files();

  Window window_;
  Services services_;
  ResultList& results_;
  ViewerPane& viewer_;
  Made last_;  ///< its list only while the window offers to go through it again
  SearchChain chain_;
  std::vector<UnreadFile> unread_;
  std::int64_t files_searched_ = 0;
  double started_ = 0;  ///< of the run, in seconds since midnight
  bool running_ = false;
  bool stop_ = false;
};

}  // namespace tallowmere
