#pragma once

#include <string>
#include <string_view>

#include "tools/driver/list_view.h"
#include "tools/driver/program.h"
#include "tools/driver/window.h"

namespace tallowmere::driver {

/// The running program as its user sees it: the main window and the dialogs of a search.
class MainWindow {
 public:
  /// Starts the program and waits for its window; throws when none appears.
  explicit MainWindow(const std::string& program_path, std::string_view arguments = {});

  const Program& program() const { return program_; }
  Window window() const { return window_; }
  Window control(int id) const { return window_.child(id); }
  ListView list() const;

  std::string count_label() const;
  std::string timing_label() const;
  bool is_searching() const;

  /// Clicks Search and waits for the dialog that appears, the narrow prompt or the criteria dialog.
  Window press_search(std::string_view dialog_caption) const;
  /// Chooses an answer in the narrow prompt and waits for the criteria dialog that follows.
  Window choose_narrowing(Window prompt, int option, std::string_view dialog_caption) const;
  /// Clicks a button of a dialog and waits for the dialog that this opens.
  Window open(Window dialog, int button, std::string_view caption) const;
  /// Clicks a button of a dialog and waits until the dialog is gone.
  bool close(Window dialog, int button) const;

  /// Fills in the criteria dialog and clicks Begin. Returns when the dialog is gone.
  void begin(Window dialog, int search_type, std::string_view criteria) const;
  /// Waits for the end of the run that begin() started.
  bool wait_for_end(int milliseconds = hang_ms) const;
  /// Makes a whole New Search on an empty list.
  bool search(int search_type, std::string_view criteria) const;

  /// Closes the window and waits for the program's end.
  bool quit() const;

 private:
  Program program_;
  Window window_;
};

inline constexpr std::string_view main_caption = " Tallowmere 32";
inline constexpr std::string_view new_search_caption = "Search Criteria - New Search";
inline constexpr std::string_view list_search_caption = "Search Criteria - List Search";
inline constexpr std::string_view file_search_caption = "Search Criteria - File Search";
inline constexpr std::string_view narrow_caption = "Narrow Search?";
inline constexpr std::string_view where_caption = "WhereTo Search";
inline constexpr std::string_view dates_caption = "Dates To Search";
inline constexpr std::string_view proximity_caption = "Set Proximity";
inline constexpr std::string_view fonts_caption = "Change Font";

}  // namespace tallowmere::driver
