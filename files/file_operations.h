#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "engine/file_system.h"

namespace tallowmere {

/// Whether an operation may replace another file.
struct Replace {
  bool allowed = false;
  std::optional<FileFacts> seen = {};  ///< only while the other file has these facts
};

/// What the user can do with files. Paths are full ones. Each operation is done completely or
/// leaves everything as it was. Implemented in win32/; tests have one in memory.
class FileOperations {
 public:
  /// Called now and then with the bytes done and the bytes in all; false gives up the operation.
  using Progress = std::function<bool(std::int64_t done, std::int64_t total)>;

  /// The SystemError::code of an operation that may not replace the file at its target.
  static constexpr int in_the_way = 80;

  virtual ~FileOperations() = default;

  /// Asks for a file's facts; fails for what is a folder by now.
  virtual std::optional<SystemError> facts(const std::string& path, FileFacts& facts) = 0;

  /// Copies a file. An existing target stays as it is until the copy is complete, and is checked
  /// again before it is replaced.
  virtual std::optional<SystemError> copy(const std::string& source, const std::string& target,
                                          const Replace& replace, const Progress& progress) = 0;

  /// Moves a file as copy() does; the source is deleted when the target is complete.
  virtual std::optional<SystemError> move(const std::string& source, const std::string& target,
                                          const Replace& replace, const Progress& progress) = 0;

  /// Renames a file within its folder; never replaces another file.
  virtual std::optional<SystemError> rename(const std::string& source,
                                            const std::string& target) = 0;

  /// True when remove() can move this file to a Recycle Bin.
  virtual bool can_recycle(const std::string& path) = 0;

  /// Deletes a file for good, or moves it to the Recycle Bin.
  virtual std::optional<SystemError> remove(const std::string& path, bool recycle) = 0;

  /// Makes a folder and those above it that are missing. Does nothing when it exists.
  virtual std::optional<SystemError> create_folder(const std::string& folder) = 0;
};

}  // namespace tallowmere
