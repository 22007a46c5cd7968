#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "engine/file_system.h"

namespace tallowmere {

/// What reading a typed path asks of the system. Neither touches a disk.
struct PathPorts {
  /// Puts the values of variables such as %USERPROFILE% in their places.
  std::function<std::string(const std::string&)> expand_variables;
  /// Works out "." and ".." in a whole path.
  std::function<std::string(const std::string&)> full_path;
};

/// The path that a typed or pasted text names: without quotes and the white space around it, with
/// its variables expanded and, but for a root, without final separators. Empty when it names none.
std::string path_from_text(std::string_view text, const PathPorts& ports);

/// True for a path that begins with a drive's root or a share.
bool is_whole_path(std::string_view path);

inline constexpr std::string_view folder_refused_title = "Cannot Open Folder";
std::string folder_refused_message(const std::string& path, const SystemError& error);
std::string no_whole_path_message(const std::string& path);

}  // namespace tallowmere
