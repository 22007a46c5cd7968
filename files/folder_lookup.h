#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "engine/file_system.h"
#include "files/folder_tree.h"

namespace tallowmere {

/// The result of looking for a folder.
struct FolderLookup {
  FolderTree tree;                   ///< has the folder open
  std::optional<SystemError> error;  ///< why there is none
};

// All of these wait for the disk, and ask `go_on` during long listings.

/// Finds the first of `paths` that can be opened; else returns the error of the last.
FolderLookup look_up_first(const FileSystem& files, const std::vector<std::string>& paths,
                           const std::function<bool()>& go_on);

/// Opens the folder of a search, or else `fallback`. A folder on a share stays even when the share
/// does not answer: it may tomorrow.
FolderLookup look_up_saved(const FileSystem& files, const std::string& path,
                           const std::string& fallback, const std::function<bool()>& go_on);

/// Opens a folder, or the folder of a file; else returns the error of `path` itself.
FolderLookup look_up_typed(const FileSystem& files, const std::string& path,
                           const std::function<bool()>& go_on);

}  // namespace tallowmere
