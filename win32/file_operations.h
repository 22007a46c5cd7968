#pragma once

#include <windows.h>

#include <string>

#include "files/file_operations.h"
#include "win32/recycle_bin.h"

namespace tallowmere::win32 {

/// Changes to the files of Windows, for paths of any length and any name that the system has.
class WinFileOperations : public FileOperations {
 public:
  using Result = std::optional<SystemError>;

  /// The questions that the system itself may ask about the Recycle Bin appear over `owner`.
  explicit WinFileOperations(HWND owner) : bin_(owner) {}

  Result facts(const std::string& path, FileFacts& facts) override;
  Result copy(const std::string& source, const std::string& target, const Replace& replace,
              const Progress& progress) override;
  Result move(const std::string& source, const std::string& target, const Replace& replace,
              const Progress& progress) override;
  Result rename(const std::string& source, const std::string& target) override;
  bool can_recycle(const std::string& path) override { return bin_.takes(path); }
  Result remove(const std::string& path, bool recycle) override;
  Result create_folder(const std::string& folder) override;

 private:
  RecycleBin bin_;
};

}  // namespace tallowmere::win32
