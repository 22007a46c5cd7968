#include "shell/start_folder.h"

#include <algorithm>

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

}  // namespace tallowmere
