#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "engine/file_system.h"

namespace tallowmere {

/// Whether an operation may put its file in the place of another one.
struct Replace {
  bool allowed = false;
  std::optional<FileFacts> seen = {};  ///< only as long as the other file has these facts
};

/// What the user can have done to files. Paths are full ones. Each operation is done wholly or
/// leaves everything as it was; implemented in win32/, tests have one in memory.
class FileOperations {
 public:
  /// Told the bytes done and the bytes in all now and then; false: the operation is given up.
  using Progress = std::function<bool(std::int64_t done, std::int64_t total)>;

  /// SystemError::code of an operation that may not replace the file at its target.
  static constexpr int in_the_way = 80;

  virtual ~FileOperations() = default;

  /// Of a file. What is a folder by now has none.
  virtual std::optional<SystemError> facts(const std::string& path, FileFacts& facts) = 0;

  /// An existing target stays what it is until the copy is complete, and is looked at once more
  /// before it is replaced.
  virtual std::optional<SystemError> copy(const std::string& source, const std::string& target,
                                          const Replace& replace, const Progress& progress) = 0;

  /// As copy(); the source goes when the target is complete.
  virtual std::optional<SystemError> move(const std::string& source, const std::string& target,
                                          const Replace& replace, const Progress& progress) = 0;

  /// Within one folder, never over another file.
  virtual std::optional<SystemError> rename(const std::string& source,
                                            const std::string& target) = 0;

  /// Whether remove() can put this file into a Recycle Bin.
  virtual bool can_recycle(const std::string& path) = 0;

  /// Deletes a file for good or into the Recycle Bin.
  virtual std::optional<SystemError> remove(const std::string& path, bool recycle) = 0;

  /// Makes a folder and those above it that are missing. Nothing to do when it exists.
  virtual std::optional<SystemError> create_folder(const std::string& folder) = 0;
};

}  // namespace tallowmere
