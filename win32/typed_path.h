#pragma once

#include <string>

namespace tallowmere::win32 {

/// Replaces environment variables, such as %USERPROFILE%, by their values.
std::string expand_variables(const std::string& text);

/// Returns the full path without "." and ".."; touches no disk.
std::string full_path(const std::string& path);

}  // namespace tallowmere::win32
