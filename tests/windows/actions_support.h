#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "actions/action_host.h"
#include "win32/message_loop.h"

namespace tallowmere {

/// A window with a text field in front, and what the commands reported to it.
class RecordingHost : public ActionHost {
 public:
  RecordingHost()
      : window_(CreateWindowW(L"EDIT", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 400, 300,
                              nullptr, nullptr, GetModuleHandleW(nullptr), nullptr)) {
    SetForegroundWindow(window_);
  }
  ~RecordingHost() override { DestroyWindow(window_); }

  HWND window() const override { return window_; }
  void message(std::string_view prompt, std::string_view title) override {
    messages.push_back(std::string(title).append(": ").append(prompt));
  }
  void status(std::string_view text) override { last_status = text; }
  bool serve_events() override {
    if (meanwhile) meanwhile();
    return win32::pump_pending();
  }

  std::vector<std::string> messages;
  std::string last_status;
  std::function<void()> meanwhile;  ///< called whenever events are served

 private:
  HWND window_;
};

}  // namespace tallowmere
