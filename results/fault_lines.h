#pragma once

#include <string>
#include <vector>

#include "engine/file_search.h"

namespace tallowmere {

/// Makes a line for each of the first ten, "path: reason" after a line break, then says how many
/// more there are.
std::string fault_lines(const std::vector<UnreadFile>& files);

}  // namespace tallowmere
