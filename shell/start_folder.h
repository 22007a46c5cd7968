#pragma once

#include <string>
#include <string_view>

#include "engine/search_criteria.h"

namespace tallowmere {

/// The folder to search that the program's argument names, without quotes and, but for a root,
/// without final separators; empty when it names none. "C:" is the root of the drive. Nothing says
/// that the folder exists or that the path is complete.
std::string start_folder(std::string_view argument);

/// Makes this the folder to search; a share has no drive.
void set_search_folder(SearchCriteria& search, const std::string& folder);

}  // namespace tallowmere
