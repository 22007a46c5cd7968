#pragma once

#include <exception>

namespace tallowmere::win32 {

/// Shows the user that something could not be finished for lack of memory or a thread; needs
/// neither itself. While such a message is open, further failures are not shown.
void tell_failure(const std::exception& error) noexcept;

/// Runs a handler that the system has called, through whose frames no exception may pass. An
/// exception is shown to the user; the result is then `fallback`, and the program goes on.
template <typename Result, typename Handler>
Result guarded(Result fallback, Handler handler) noexcept {
  try {
    return handler();
  } catch (const std::exception& error) {
    tell_failure(error);
    return fallback;
  }
}

}  // namespace tallowmere::win32
