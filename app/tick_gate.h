#pragma once

#include <cstdint>

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

}  // namespace tallowmere
