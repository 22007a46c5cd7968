#pragma once

#include <functional>
#include <string>

namespace tallowmere {

/// A folder's path that fits: as it is, or with "…" in the place of folders in its middle, such as
/// "C:\…\docs\2024\"; of one name, its end. `fits` holds for what is shorter than a text that fits.
std::string shortened_path(const std::string& path,
                           const std::function<bool(const std::string&)>& fits);

}  // namespace tallowmere
