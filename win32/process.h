#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "engine/file_system.h"
#include "win32/handle.h"

namespace tallowmere::win32 {

/// A program that was started; it runs on when this object is destroyed.
class StartedProgram {
 public:
  /// Starts `program`, a file with its extension, with its window maximized and in front. A name
  /// without a folder is looked for in the system's folders and on the path. No command interpreter
  /// sees the command line.
  std::optional<SystemError> start(const std::string& program, const std::string& command_line);

  /// Opens `path` in the system's own way, with the program for files of its kind, its window
  /// maximized and in front. What the system asks meanwhile appears over `owner`. Serves events.
  std::optional<SystemError> open(const std::string& path, HWND owner);

  /// Returns the process; 0 when nothing was started: a program that runs already got the file.
  DWORD id() const { return id_; }
  bool is_running() const;
  /// True when the program is ready and waits for keys.
  bool is_ready() const;

 private:
  void keep(HANDLE process);

  Handle process_;
  DWORD id_ = 0;
};

/// A process of another program. No other process gets its number while the object lives.
class OtherProcess {
 public:
  explicit OtherProcess(DWORD id);

  /// True when the system considers its program file to be named `name`, in whatever folder.
  bool runs(const std::string& name) const;
  /// True when its integrity level is above this program's, or when it is too protected to show it:
  /// the system then drops the keys that are sent to its windows.
  bool outranks_us() const;

 private:
  Handle process_;
  bool protected_ = false;
};

}  // namespace tallowmere::win32
