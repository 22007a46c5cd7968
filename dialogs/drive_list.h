#pragma once

#include <string>
#include <vector>

namespace tallowmere {

/// The drives that exist, as C:\. No drive is touched, so that a slow or absent one costs nothing.
std::vector<std::string> existing_drives();

/// The current folder of `drive`, as a command prompt would find it; mostly its root.
std::string current_folder(const std::string& drive);

}  // namespace tallowmere
