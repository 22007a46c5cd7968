#pragma once

#include <dirent.h>

#include <memory>
#include <string>

#include "engine/file_system.h"

namespace tallowmere {

/// The file system of a POSIX system. Hidden are the names that begin with a dot. Symbolic links
/// are not followed, neither to folders nor to files, except where the caller names one.
class PosixFileSystem : public FileSystem {
 public:
  PosixFileSystem();
  ~PosixFileSystem() override;
  PosixFileSystem(const PosixFileSystem&) = delete;
  PosixFileSystem& operator=(const PosixFileSystem&) = delete;

  std::optional<SystemError> list_folder(const std::string& folder, FolderListing& listing,
                                         const std::function<bool()>& go_on) override;
  std::optional<SystemError> open(const std::string& folder, std::string_view name) override;
  std::optional<SystemError> read(unsigned char* into, std::size_t wanted,
                                  std::size_t& got) override;
  std::optional<SystemError> seek(std::int64_t position) override;
  void close() override;
  std::optional<SystemError> facts(const std::string& folder, std::string_view name,
                                   FileFacts& facts) override;

 private:
  struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
  };

  /// The handle from which `name` is reached, and what to call it there: the folder last listed
  /// is kept open, because names in it are then found without walking the whole path.
  int base_of(const std::string& folder, std::string_view name);
  void add_entry(const dirent& entry, FolderListing& listing);

  std::unique_ptr<DIR, FolderCloser> listed_;
  std::string listed_path_;
  std::string name_;  ///< the name for the system, as base_of left it
  int file_ = -1;
};

}  // namespace tallowmere
