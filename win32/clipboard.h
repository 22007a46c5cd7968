#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace tallowmere::win32 {

/// The clipboard's text, or nothing when it holds none or another program keeps it open.
std::optional<std::string> clipboard_text(HWND owner);

}  // namespace tallowmere::win32
