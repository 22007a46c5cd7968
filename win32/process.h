#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "engine/file_system.h"

namespace tallowmere::win32 {

/// A program that was started; runs on when the object goes.
class StartedProgram {
 public:
  StartedProgram() = default;
  ~StartedProgram();
  StartedProgram(const StartedProgram&) = delete;
  StartedProgram& operator=(const StartedProgram&) = delete;

  /// Starts `program`, a file with its extension, with its window maximized and in front. A mere
  /// name is looked for in the system's folders and on the path. No command interpreter sees the
  /// command line.
  std::optional<SystemError> start(const std::string& program, const std::string& command_line);

  DWORD id() const { return id_; }
  bool is_running() const;
  /// True when it has come so far as to wait for keys.
  bool is_ready() const;

 private:
  HANDLE process_ = nullptr;
  DWORD id_ = 0;
};

}  // namespace tallowmere::win32
