#pragma once

#include <string>
#include <string_view>

namespace tallowmere::win32 {

/// The form of a folder's path that the system takes without its limit of 260 characters and
/// without touching names such as those with trailing dots: "\\?\C:\docs\". Relative paths, slashes
/// and the components "." and ".." are worked out here, because the system no longer does it for
/// this form. `folder` is UTF-8; the result ends as `folder` does.
std::u16string long_path(std::string_view folder);

/// The same string for the system's wide-character functions.
inline const wchar_t* wide(const std::u16string& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}

}  // namespace tallowmere::win32
