#pragma once

#include <windows.h>

#include <string>

#include "engine/file_system.h"

namespace tallowmere::win32 {

/// The file system of Windows. Paths of any length and any name that the system has.
class WinFileSystem : public FileSystem {
 public:
  WinFileSystem() = default;
  ~WinFileSystem() override;
  WinFileSystem(const WinFileSystem&) = delete;
  WinFileSystem& operator=(const WinFileSystem&) = delete;

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
  /// The path of a file for the system. The folder's part is worked out once per folder.
  const std::u16string& path_of(const std::string& folder, std::string_view name);

  std::string folder_;
  std::u16string path_;
  std::size_t folder_length_ = 0;  ///< how much of path_ is the folder
  HANDLE file_ = INVALID_HANDLE_VALUE;
};

}  // namespace tallowmere::win32
