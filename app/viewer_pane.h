#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "app/idle_counter.h"
#include "app/tick_gate.h"
#include "app/viewer_box.h"
#include "engine/code_page.h"
#include "engine/search_criteria.h"
#include "engine/text_encoding.h"
#include "results/result_list.h"
#include "viewer/file_viewer.h"
#include "viewer/hit_finder.h"
#include "viewer/hit_marks.h"
#include "viewer/hit_navigation.h"
#include "viewer/hit_ordinal.h"
#include "viewer/hyper_find.h"
#include "viewer/view_scroll.h"
#include "viewer/waiting_files.h"

namespace tallowmere {

/// The viewer's part of the main window: the file on view, the steps through its hits and what the
/// user has selected in it. A step through many chunks or on a slow disk, and any message, serves
/// events meanwhile; what those may do then is up to the window, which asks finding(). One step is
/// made at a time: a call that would begin another one meanwhile does nothing.
class ViewerPane : private ViewerHost {
 public:
  /// What the main window does for the viewer.
  struct Window {
    HWND handle;
    /// The commands that can be used may have changed; also called after every step.
    std::function<void()> state_changed;
    std::function<void(const FileRecord*)> file_shown;  ///< null: none is any more
    std::function<void()> row_corrected;  ///< the facts of the viewed one changed on disk
    std::function<void(std::size_t)> select_row;
    std::function<bool()> searching;     ///< a run is under way
    std::function<void()> note_changed;  ///< hit_text() is another
  };

  /// All of them outlive the pane; `files` lives until the program ends, since a call that hangs
  /// may need it.
  ViewerPane(ViewerBox& box, ResultList& results, const FileSystem& files,
             const SearchCriteria& search, const CodePage& page, Window window);

  bool viewing() const { return viewer_.loaded(); }
  /// Of the file on view; the code page's without one.
  TextEncoding encoding() const { return viewer_.encoding(); }
  /// A step is under way that serves events and can be stopped.
  bool finding() const { return step_ == Step::finding; }
  bool text_selected() const { return text_selected_; }
  /// Which hit Find Next has met, while it is still selected: "hit 3 of 17"; empty while that is
  /// not known.
  std::string hit_text() const { return hit_.text(); }

  /// The criteria have been loaded: from now on hits are theirs.
  void criteria_loaded();

  /// Opens the file of a row; nothing of it shows yet. Returns false after a message when it cannot
  /// be opened, and without one when that was stopped.
  bool open(std::size_t row);
  /// Opens the file of a row at its first hit.
  void show_first_hit(std::size_t row);
  /// Shows the beginning of a file that is open but does not show yet.
  void show_if_pending();
  /// Steps to another hit.
  void find_next() { find(true); }
  void find_prev() { find(false); }
  /// Ends the step under way, if there is one, also while a disk hangs.
  void stop() { stop_ = true; }
  void clear();

  /// The scroll bar has been worked; `code` is one of SB_*.
  void VScroll1_Change(int code);

  /// The selection as it shows, in UTF-8.
  std::string selected_text() const;
  void deselect();
  /// The selection may have changed: notes whether the user has selected text to search for, which
  /// does not only repeat the criteria.
  void check_selection();

  /// Runs `change`, which breaks the lines again, and keeps what is on view.
  void keep_view(const std::function<void()>& change);

 private:
  enum class Step { none, quick, finding };

  HitFinder make_finder();
  void wire();
  void tell_button_up() const;
  void scroll(const std::function<void(ViewScroll&)>& move);
  /// Makes one step unless another one is under way; false when it did not begin.
  bool make_step(const std::function<void()>& work);
  void find(bool forward);
  void find_hit(bool forward);
  void continue_from_view(bool forward);
  void forget_selection();
  bool selection_repeats_criteria() const;
  HitOrdinal::Place selected_place() const;
  void follow_hit();
  void hits_counted();

  bool keep_waiting();
  bool go_on() override;
  void message(std::string_view prompt, std::string_view title, bool exclamation) override;
  void beep() override;
  void file_opened(std::size_t row) override;
  void viewer_cleared() override;
  void row_corrected() override { window_.row_corrected(); }
  void select_row(std::size_t row) override { window_.select_row(row); }

  TextFace& face_;
  ViewerBox& box_;  ///< the same, with its scroll bar and its events
  const ResultList& results_;
  const SearchCriteria& search_;
  const CodePage& page_;
  Window window_;
  WaitingFiles files_;
  FileViewer viewer_;
  HitNavigation navigation_;
  ViewScroll scroll_;
  HitMarks marks_;
  std::optional<HitFinder> finder_;  ///< always there; made again with the criteria

  HitOrdinal hit_;
  IdleCounter idle_;  ///< after what it works with

  bool text_selected_ = false;
  Step step_ = Step::none;  ///< the one under way
  bool stop_ = false;
  bool busy_shown_ = false;    ///< this step has taken so long that the window shows it
  std::uint64_t started_ = 0;  ///< of the step, in milliseconds
  EventGate events_;
};

}  // namespace tallowmere
