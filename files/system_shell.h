#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/file_system.h"

namespace tallowmere {

/// What the program asks the desktop of Windows to do. Paths are full ones. Every call serves
/// events; the main window is disabled while the user is asked something. Implemented in win32/.
class SystemShell {
 public:
  /// A type of files to be saved, as the user sees it.
  struct FileType {
    std::string name;       ///< "Text"
    std::string extension;  ///< "txt"
  };
  struct SavedFile {
    std::string path;
    std::size_t type = 0;  ///< index of the chosen type
  };

  virtual ~SystemShell() = default;

  /// Opens a window of the file's folder with the file selected.
  virtual std::optional<SystemError> show_in_folder(const std::string& path) = 0;
  /// Does with a file what the system names by `verb`: "openas", "properties".
  virtual std::optional<SystemError> execute(std::string_view verb, const std::string& path) = 0;
  /// Asks where to save a file and, when there is one, whether to replace it. Nothing when the user
  /// cancels.
  virtual std::optional<SavedFile> ask_where_to_save(const std::string& name,
                                                     const std::vector<FileType>& types) = 0;
};

}  // namespace tallowmere
