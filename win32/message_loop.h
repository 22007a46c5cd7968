#pragma once

#include <windows.h>

#include <functional>

namespace tallowmere::win32 {

/// Passes a message from the queue to its window: first to the Form it belongs to (which sees keys
/// before its controls), then to the dialog keyboard, then to the window itself.
void dispatch_message(MSG& message);

/// Serves every message that is waiting. Returns false when the program is to end; the quit message
/// is then back in the queue for the outer loop.
bool pump_pending();
/// Serves them likewise, but drops the messages that are not `wanted`.
bool pump_pending(const std::function<bool(const MSG&)>& wanted);

/// Serves messages until the program is to end; returns its exit code.
int run_message_loop();

}  // namespace tallowmere::win32
