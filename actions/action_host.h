#pragma once

#include <windows.h>

#include <string_view>

namespace tallowmere {

/// What the commands ask of the main window, which outlives them. Texts are UTF-8.
class ActionHost {
 public:
  virtual ~ActionHost() = default;

  virtual HWND window() const = 0;
  /// A message box with an OK button; returns when it was answered.
  virtual void message(std::string_view prompt, std::string_view title) = 0;
  /// Shows how a command goes on; empty when there is nothing more to show.
  virtual void status(std::string_view text) = 0;
  /// Serves every event that waits. Returns false when the program is to end.
  virtual bool serve_events() = 0;
};

}  // namespace tallowmere
