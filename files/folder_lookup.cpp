#include "files/folder_lookup.h"

#include <string_view>

namespace tallowmere {

FolderLookup look_up_first(const FileSystem& files, const std::vector<std::string>& paths,
                           const std::function<bool()>& go_on) {
  FolderLookup lookup;
  for (const std::string& path : paths) {
    if (path.empty()) continue;
    lookup.error = lookup.tree.open(files, path, go_on);
    if (!lookup.error) break;
  }
  return lookup;
}

FolderLookup look_up_saved(const FileSystem& files, const std::string& path,
                           const std::string& fallback, const std::function<bool()>& go_on) {
  if (!is_share(path)) return look_up_first(files, {path, fallback}, go_on);
  FolderLookup lookup;
  if (lookup.tree.open(files, path, go_on)) lookup.tree.open_unlisted(path);
  return lookup;
}

FolderLookup look_up_typed(const FileSystem& files, const std::string& path,
                           const std::function<bool()>& go_on) {
  FolderLookup lookup = look_up_first(files, {path}, go_on);
  const std::size_t separator = path.rfind(path_separator);
  if (!lookup.error || separator == std::string::npos) return lookup;
  const std::string folder = path.substr(0, separator + 1);
  // Only a file can be opened.
  if (files.reader()->open(folder, std::string_view(path).substr(separator + 1))) return lookup;
  return look_up_first(files, {folder}, go_on);
}

}  // namespace tallowmere
