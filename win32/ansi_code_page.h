#pragma once

#include "engine/code_page.h"

namespace tallowmere::win32 {

/// Returns the system's ANSI code page when it has one byte per character, otherwise Windows-1252.
CodePage ansi_code_page();

}  // namespace tallowmere::win32
