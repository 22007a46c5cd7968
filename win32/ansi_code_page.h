#pragma once

#include "engine/code_page.h"

namespace tallowmere::win32 {

/// The system's ANSI code page where it has one byte per character, otherwise Windows-1252.
CodePage ansi_code_page();

}  // namespace tallowmere::win32
