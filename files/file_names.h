#pragma once

#include <string>
#include <string_view>

#include "engine/file_system.h"

namespace tallowmere {

/// Says why nothing on a disk can be named `name`, as a sentence for the user; empty when it can.
std::string name_fault(std::string_view name);

struct TypedFolder {
  std::string path;   ///< with its final separator
  std::string fault;  ///< why no folder can have this path, for the user; empty when one can
};

/// Finds the folder that `text` names as seen from `open_folder`: the open folder itself when
/// nothing is typed, one or more folders below it, or a full path. Both slashes separate folders.
TypedFolder typed_folder(const std::string& open_folder, std::string_view text,
                         char separator = path_separator);

/// Returns what comes before the last period of a name; the whole name when that is empty or there
/// is no period.
std::string_view name_stem(std::string_view name);

}  // namespace tallowmere
