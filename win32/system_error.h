#pragma once

#include "engine/file_system.h"

namespace tallowmere::win32 {

/// The system's description of one of its error codes (those of GetLastError).
SystemError system_error(unsigned long code);

/// The description of what the last failed call on this thread left behind.
SystemError last_system_error();

}  // namespace tallowmere::win32
