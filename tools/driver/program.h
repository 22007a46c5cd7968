#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "tools/driver/window.h"

namespace tallowmere::driver {

/// A running program, driven through its windows. Destroying the object ends it if it still runs.
class Program {
 public:
  /// Starts the program; throws when it does not start. The arguments go to the command line
  /// unchanged.
  explicit Program(const std::string& path, std::string_view arguments = {});
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// Waits for the visible top-level window with this caption; null when the time is over.
  Window wait_for_window(std::string_view caption, int milliseconds = hang_ms) const;
  /// Finds that window without waiting.
  Window find_window(std::string_view caption) const;

  bool is_running() const;
  /// Waits for the program's end; false when the time is over.
  bool wait_for_exit(int milliseconds = hang_ms) const;
  DWORD exit_code() const;

 private:
  PROCESS_INFORMATION process_{};
};

/// Returns the prompt of a message box.
std::string message_box_text(Window box);

/// Returns the folder of the running test or tool, with its final separator.
std::string own_folder();

}  // namespace tallowmere::driver
