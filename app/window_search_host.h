#pragma once

#include <windows.h>

#include <functional>

#include "app/tick_gate.h"
#include "engine/file_search.h"
#include "results/result_list.h"

namespace tallowmere {

/// What a search reports to the main window and asks of it.
class WindowSearchHost : public SearchHost {
 public:
  /// Matches go to `results`. `stop` is set by the window's handlers, from inside go_on(). Where
  /// `many_files` may follow, the message that one cannot be read offers to stop.
  WindowSearchHost(HWND window, ResultList& results, const bool& stop, bool many_files);

  /// `progress` is called a few times a second while the search runs.
  void set_progress(std::function<void()> progress) { progress_ = std::move(progress); }

  bool go_on() override;
  void file_matched(const FoundFile& file) override;
  bool read_failed(const std::string& path, const SystemError& error) override;
  bool retry_folder(const SystemError& error) override;

 private:
  HWND window_;
  ResultList& results_;
  const bool& stop_;
  const bool many_files_;
  std::function<void()> progress_;
  EventGate events_;
  TickGate progress_gate_;
};

}  // namespace tallowmere
