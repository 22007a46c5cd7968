#pragma once

#include <exception>

namespace tallowmere::win32 {

/// Tells the user that something could not be finished: no memory, no thread. Needs none itself.
/// While such a message is open, further failures are not told.
void tell_failure(const std::exception& error) noexcept;

/// Runs a handler that the system has called: through its frames no exception may pass. One that
/// comes is told to the user, the result is then `fallback`, and the program goes on.
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
