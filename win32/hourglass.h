#pragma once

#include <windows.h>

namespace tallowmere::win32 {

/// Shows the hourglass pointer while the object lives.
class Hourglass {
 public:
  Hourglass() : before_(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
  ~Hourglass() { SetCursor(before_); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;

 private:
  HCURSOR before_;
};

}  // namespace tallowmere::win32
