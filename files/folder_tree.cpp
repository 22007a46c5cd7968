#include "files/folder_tree.h"

#include <algorithm>
#include <utility>

#include "engine/letter_case.h"

namespace tallowmere {
namespace {

/// Returns the length of the root of `path`, with its separator: \\server\share\, C:\ or /.
std::size_t root_length(const std::string& path, char separator) {
  const auto behind_separator = [&](std::size_t from) {
    const std::size_t found = path.find(separator, from);
    return found == std::string::npos ? path.size() : found + 1;
  };
  return separator == '\\' && is_share(path) ? behind_separator(behind_separator(2))
                                             : behind_separator(0);
}

}  // namespace

bool is_share(std::string_view path) {
  return path.starts_with("\\\\");
}

std::vector<FolderRow> folder_ancestry(const std::string& path, char separator) {
  std::vector<FolderRow> rows;
  std::size_t end = root_length(path, separator);
  rows.push_back({path.substr(0, end), path.substr(0, end), 0, FolderKind::ancestor});
  while (end < path.size()) {
    const std::size_t start = end;
    end = std::min(path.find(separator, start), path.size() - 1) + 1;
    const std::size_t length = end - start - (path[end - 1] == separator ? 1 : 0);
    if (length == 0) continue;
    rows.push_back({path.substr(start, length), path.substr(0, end), static_cast<int>(rows.size()),
                    FolderKind::ancestor});
  }
  rows.back().kind = FolderKind::open;
  return rows;
}

std::optional<SystemError> FolderTree::open(const FileSystem& files, const std::string& path,
                                            const std::function<bool()>& go_on) {
  const std::string folder = with_separator(path);
  FolderListing listing;
  if (std::optional<SystemError> error = files.list_folder(folder, listing, go_on)) return error;
  std::vector<FolderRow> rows = folder_ancestry(folder, path_separator);
  const int open_row = static_cast<int>(rows.size()) - 1;
  for (std::string& name : sorted_subfolders(listing)) {
    std::string child_path = with_separator(folder + name);
    rows.push_back({std::move(name), std::move(child_path), open_row + 1, FolderKind::child});
  }
  path_ = folder;
  rows_ = std::move(rows);
  open_row_ = open_row;
  return std::nullopt;
}

void FolderTree::open_unlisted(const std::string& path) {
  path_ = with_separator(path);
  rows_ = folder_ancestry(path_, path_separator);
  open_row_ = static_cast<int>(rows_.size()) - 1;
}

std::string set_dir_to_drive(const std::string& drive, std::string& path,
                             const std::string& tree_path) {
  if (path.empty()) path = tree_path;
  const bool same_drive = name_key(drive.substr(0, 2)) == name_key(path.substr(0, 2));
  return same_drive ? path : drive;
}

std::string drive_not_ready_message(const SystemError& error) {
  return error.text + " - encountered while trying to access disk.";
}

}  // namespace tallowmere
