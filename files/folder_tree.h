#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/file_system.h"

namespace tallowmere {

enum class FolderKind {
  ancestor,  ///< an opened folder above the open one
  open,      ///< the folder itself
  child      ///< a closed folder in it
};

struct FolderRow {
  std::string name;  ///< the root shows as its whole path
  std::string path;  ///< with its final separator
  int depth = 0;     ///< 0 for the root
  FolderKind kind = FolderKind::child;
};

/// Returns the rows of `path` and its ancestors, the root first. Roots are `C:\`,
/// `\\server\share\` and, on systems without drives, `/`.
std::vector<FolderRow> folder_ancestry(const std::string& path, char separator);

/// True for a path such as \\server\share\x, which is on no drive.
bool is_share(std::string_view path);

/// What a folder list box shows: the ancestors of the open folder, that folder, its subfolders.
class FolderTree {
 public:
  /// Opens a folder; on failure everything stays as it was. `go_on` is asked during long listings;
  /// when it says no, the subfolders found so far are shown.
  std::optional<SystemError> open(const FileSystem& files, const std::string& path,
                                  const std::function<bool()>& go_on);

  /// Opens a folder that cannot be listed, without its subfolders.
  void open_unlisted(const std::string& path);

  /// Returns the open folder with its final separator; empty before the first open().
  const std::string& path() const { return path_; }
  const std::vector<FolderRow>& rows() const { return rows_; }
  /// Returns the row of the open folder; -1 before the first open().
  int open_row() const { return open_row_; }

 private:
  std::string path_;
  std::vector<FolderRow> rows_;
  int open_row_ = -1;
};

/// Returns the folder that the tree opens when `drive` was chosen: `path` when it is on that drive,
/// else the drive itself. An empty `path` first becomes the tree's folder.
std::string set_dir_to_drive(const std::string& drive, std::string& path,
                             const std::string& tree_path);

inline constexpr std::string_view drive_not_ready_title = "Drive Not Ready";
std::string drive_not_ready_message(const SystemError& error);

}  // namespace tallowmere
