#pragma once

#include <windows.h>

#include <cstdint>

#include "win32/message_loop.h"

namespace tallowmere {

/// Lets something happen at most once in a number of milliseconds. The first question is answered
/// with yes.
class TickGate {
 public:
  explicit TickGate(std::uint64_t interval_ms) : interval_(interval_ms) {}

  bool due(std::uint64_t now_ms) {
    if (opened_ && now_ms - last_ < interval_) return false;
    opened_ = true;
    last_ = now_ms;
    return true;
  }

 private:
  std::uint64_t interval_;
  std::uint64_t last_ = 0;
  bool opened_ = false;
};

/// Serves the events that wait, at most once in 10 ms: even an empty look at the queue costs more
/// than testing a small file.
class EventGate {
 public:
  /// Whether the time has come; the events have then been served.
  bool serve() {
    if (!gate_.due(GetTickCount64())) return false;
    quitting_ = !win32::pump_pending() || quitting_;
    return true;
  }
  /// The program is to end.
  bool quitting() const { return quitting_; }

 private:
  TickGate gate_{10};
  bool quitting_ = false;
};

}  // namespace tallowmere
