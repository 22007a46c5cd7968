#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "engine/file_search.h"
#include "files/file_operations.h"
#include "results/result_list.h"

namespace tallowmere {

enum class FileCommand { move, copy, rename, erase };

/// Where files are to be copied or moved.
struct TransferRequest {
  FileCommand command = FileCommand::copy;  ///< copy or move
  std::string folder;                       ///< with its final separator; exists
  std::string name;                         ///< a new name; empty: each file keeps its own
  bool confirm_replacement = true;
};

struct ReplaceQuestion {
  std::string source;
  std::string target;
  FileFacts source_facts;
  FileFacts target_facts;
};

enum class ReplaceAnswer { yes, yes_to_all, no, cancel };

/// The user, as work on several files meets them. Each call may serve events.
class BatchUser {
 public:
  virtual ~BatchUser() = default;
  /// Before each file; false: the rest is not wanted any more.
  virtual bool at_file(std::size_t index, std::size_t count, const std::string& path) = 0;
  /// During a long file, in bytes; false: the file is given up, and the rest.
  virtual bool at_bytes(std::int64_t done, std::int64_t total) = 0;
  virtual ReplaceAnswer ask_replace(const ReplaceQuestion& question) = 0;
};

/// A file that a command failed on; told like one that a search passed over.
using FileFault = UnreadFile;

/// A file that has another path now.
struct MovedFile {
  std::string from;
  std::string to;
  bool replaced = false;  ///< another file was at `to`
};

/// A file that a copy has replaced.
struct RewrittenFile {
  std::string path;
  FileFacts facts;
};

/// What has happened to files. Their paths say which: events are served during the work, so their
/// rows may be anywhere by now, or gone.
struct BatchOutcome {
  std::size_t selected = 0;
  std::size_t done = 0;
  std::vector<FileFault> faults;
  bool stopped = false;  ///< by the user, before all files had their turn
  std::vector<MovedFile> moved;
  std::vector<RewrittenFile> rewritten;
  std::vector<std::string> gone;  ///< deleted, or no longer wanted in the list
};

/// The full paths of the rows' files. One that the list has twice comes once.
std::vector<std::string> paths_of(const ResultList& list, std::span<const std::size_t> rows);

/// Copies or moves files; one that fails does not keep the others back. Two files of one name do
/// not both come into one folder: the second is refused. A target that is no longer what the user
/// was asked about is asked about again.
BatchOutcome transfer_files(std::span<const std::string> paths, const TransferRequest& request,
                            FileOperations& operations, BatchUser& user);

/// Deletes files. `recycle` tells for each of them whether it goes into the Recycle Bin.
BatchOutcome delete_files(std::span<const std::string> paths, const std::vector<bool>& recycle,
                          FileOperations& operations, BatchUser& user);

/// Gives one file another name in its folder. The name has been found good.
BatchOutcome rename_file(const std::string& path, const std::string& name,
                         FileOperations& operations);

/// What became of the file that the viewer shows.
enum class ViewedFile {
  untouched,
  moved,      ///< the same file at another path; viewed_index is its record
  rewritten,  ///< another file has taken its place; viewed_index is that one's record
  gone        ///< no record is viewed any more
};

struct ListChange {
  bool records_changed = false;  ///< renamed or moved: the list is to be sorted again
  bool rows_refreshed = false;   ///< some show another date or size
  bool rows_removed = false;
  std::ptrdiff_t row_to_select = -1;  ///< when rows were removed; -1: none is left
  ViewedFile viewed = ViewedFile::untouched;
};

/// Brings the list up to date with what has happened to files. A moved file's records follow it;
/// those of a file that it replaced go. A copied file's facts come into the records of the one that
/// it replaced.
ListChange update_list(ResultList& list, const BatchOutcome& outcome);

}  // namespace tallowmere
