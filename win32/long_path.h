#pragma once

#include <string>
#include <string_view>

namespace tallowmere::win32 {

/// Returns the form of a folder's path that the system takes without its limit of 260 characters
/// and without changing names such as those with trailing dots: "\\?\C:\docs\". Resolves relative
/// paths, slashes and the components "." and "..", because the system does not do it for this form.
/// `folder` is UTF-8; the result ends as `folder` does.
std::u16string long_path(std::string_view folder);

/// Returns the same string for the system's wide-character functions.
inline const wchar_t* wide(const std::u16string& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}

}  // namespace tallowmere::win32
