#pragma once

#include <string>
#include <string_view>

#include "engine/unicode.h"

namespace tallowmere::win32 {

/// Converts UTF-8 to what the system's wide functions take.
inline std::wstring wide(std::string_view utf8) {
  const std::u16string units = to_utf16(utf8);
  return std::wstring(units.begin(), units.end());
}

/// Converts the system's wide text to UTF-8.
inline std::string narrow(std::wstring_view text) {
  return to_utf8(std::u16string(text.begin(), text.end()));
}

}  // namespace tallowmere::win32
