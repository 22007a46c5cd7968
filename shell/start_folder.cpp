#include "shell/start_folder.h"

#include <algorithm>

#include "engine/file_system.h"

namespace tallowmere {

std::string start_folder(std::string_view argument) {
  // No name holds a quote. Explorer hands the root of a drive over as "C:\", the end of which a
  // program reads as an escaped quote.
  std::string folder(argument);
  std::erase(folder, '"');
  const std::size_t last = folder.find_last_not_of("\\/");
  if (last == std::string::npos) return folder.substr(0, 1);
  folder.resize(last + 1);
  if (folder.size() == 2 && folder[1] == ':') folder += '\\';
  return folder;
}

void set_search_folder(SearchCriteria& search, const std::string& folder) {
  search.path = folder;
  if (folder.size() >= 2 && folder[1] == ':') search.drive = folder.substr(0, 2) + path_separator;
}

}  // namespace tallowmere
