#pragma once

#include <string>

namespace tallowmere::win32 {

/// The text with the values of its environment variables, such as %USERPROFILE%, in their places.
std::string expand_variables(const std::string& text);

/// A whole path without "." and "..". No disk is touched.
std::string full_path(const std::string& path);

}  // namespace tallowmere::win32
