#pragma once

#include <string>

#include "engine/file_system.h"

namespace tallowmere {

/// The file system of a POSIX system. Names that begin with a dot are hidden. Symbolic links are
/// not followed, neither to folders nor to files, except where the caller names one.
class PosixFileSystem : public FileSystem {
 public:
  std::optional<SystemError> list_folder(const std::string& folder, FolderListing& listing,
                                         const std::function<bool()>& go_on) const override;
  std::optional<SystemError> facts(const std::string& folder, std::string_view name,
                                   FileFacts& facts) const override;
  std::unique_ptr<FileReader> reader() const override;
  std::unique_ptr<PendingCalls> enter_thread() const override;
};

}  // namespace tallowmere
