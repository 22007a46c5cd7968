#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "engine/file_system.h"
#include "win32/handle.h"

namespace tallowmere::win32 {

/// A program that was started; runs on when the object goes.
class StartedProgram {
 public:
  /// Starts `program`, a file with its extension, with its window maximized and in front. A mere
  /// name is looked for in the system's folders and on the path. No command interpreter sees the
  /// command line.
  std::optional<SystemError> start(const std::string& program, const std::string& command_line);

  /// Opens `path` in the system's own way: with the program that belongs to files of its kind, its
  /// window maximized and in front. `owner` is for what the system asks meanwhile. Serves events.
  std::optional<SystemError> open(const std::string& path, HWND owner);

  /// 0 when nothing was started: the system has handed the file to a program that runs already.
  DWORD id() const { return id_; }
  bool is_running() const;
  /// True when it has come so far as to wait for keys.
  bool is_ready() const;

 private:
  void keep(HANDLE process);

  Handle process_;
  DWORD id_ = 0;
};

/// A process of another program. Its number belongs to no other process while the object lives.
class OtherProcess {
 public:
  explicit OtherProcess(DWORD id);

  /// True when the name of its program file, in whatever folder, is `name` to the system.
  bool runs(const std::string& name) const;
  /// True when its integrity level is above this program's, also when it is so protected that it
  /// does not tell: the system then drops the keys that are sent to its windows.
  bool outranks_us() const;

 private:
  Handle process_;
  bool protected_ = false;
};

}  // namespace tallowmere::win32
