#pragma once

#include <functional>
#include <string>

#include "files/file_operations.h"

namespace tallowmere {

/// Runs file operations on a thread of their own, one at a time, and serves the window meanwhile: a
/// slow disk or network never freezes it. Progress is reported on the calling thread, a few times a
/// second, also while the operation itself does not report. Where the system has no thread left,
/// the operation runs on the calling one. It never throws: what it lacks becomes its error.
class BackgroundOperations : public FileOperations {
 public:
  using Result = std::optional<SystemError>;

  /// `serve` runs on the calling thread whenever events may wait.
  BackgroundOperations(FileOperations& operations, std::function<void()> serve);

  Result facts(const std::string& path, FileFacts& facts) override;
  Result copy(const std::string& source, const std::string& target, const Replace& replace,
              const Progress& progress) override;
  Result move(const std::string& source, const std::string& target, const Replace& replace,
              const Progress& progress) override;
  Result rename(const std::string& source, const std::string& target) override;
  bool can_recycle(const std::string& path) override;
  Result remove(const std::string& path, bool recycle) override;
  Result create_folder(const std::string& folder) override;

 private:
  using Work = std::function<Result(const Progress&)>;
  Result run(const Work& work, const Progress& progress) const;
  Result run(const Work& work) const;

  FileOperations& operations_;
  std::function<void()> serve_;
};

}  // namespace tallowmere
