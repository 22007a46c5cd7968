#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/file_system.h"

namespace tallowmere::win32 {

/// A file in the system's folder for temporary files; deleted with this object.
class TempFile {
 public:
  TempFile() = default;
  ~TempFile();
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  /// Makes the file; to be called only once. path() is known afterwards.
  std::optional<SystemError> write(std::string_view bytes);
  const std::string& path() const { return path_; }

 private:
  std::string path_;  ///< empty: there is none
};

}  // namespace tallowmere::win32
