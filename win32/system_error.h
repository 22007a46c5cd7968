#pragma once

#include "engine/file_system.h"

namespace tallowmere::win32 {

/// Returns the system's description of one of its error codes (those of GetLastError).
SystemError system_error(unsigned long code);

/// Returns the description of the last error on this thread.
SystemError last_system_error();

}  // namespace tallowmere::win32
