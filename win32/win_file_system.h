#pragma once

#include <cstdint>
#include <string>

#include "engine/file_system.h"

namespace tallowmere::win32 {

/// True for the attributes of a file whose content, or part of it, is not on this computer, so that
/// reading would fetch it.
bool is_online_only(std::uint32_t attributes);

/// The file system of Windows, for paths of any length and any name that the system has.
class WinFileSystem : public FileSystem {
 public:
  std::optional<SystemError> list_folder(const std::string& folder, FolderListing& listing,
                                         const std::function<bool()>& go_on) const override;
  std::optional<SystemError> facts(const std::string& folder, std::string_view name,
                                   FileFacts& facts) const override;
  std::unique_ptr<FileReader> reader() const override;
  bool has_to_seek(const std::string& folder) const override;
  std::unique_ptr<PendingCalls> enter_thread() const override;
};

}  // namespace tallowmere::win32
