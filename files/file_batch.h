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

/// Where and how files are to be copied or moved.
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

/// The user, as seen by work on several files. Each call may serve events.
class BatchUser {
 public:
  virtual ~BatchUser() = default;
  /// Shows that the work has come to this file; false stops before it.
  virtual bool at_file(std::size_t index, std::size_t count, const std::string& path) = 0;
  /// Shows the progress in a long file, in bytes; false gives up this file and the rest.
  virtual bool at_bytes(std::int64_t done, std::int64_t total) = 0;
  virtual ReplaceAnswer ask_replace(const ReplaceQuestion& question) = 0;
};

/// A file on which a command failed; reported like one that a search could not read.
using FileFault = UnreadFile;

/// A file that has another path now.
struct MovedFile {
  std::string from;
  std::string to;
  bool replaced = false;  ///< it replaced another file at `to`
};

/// A file that a copy has replaced.
struct RewrittenFile {
  std::string path;
  FileFacts facts;
};

/// What has happened to files, which are named by their paths: events are served during the work,
/// so their rows may have moved or be gone.
struct BatchOutcome {
  std::size_t selected = 0;
  std::size_t done = 0;
  std::vector<FileFault> faults;
  bool stopped = false;  ///< the user stopped it before all files were done
  std::vector<MovedFile> moved;
  std::vector<RewrittenFile> rewritten;
  std::vector<std::string> gone;  ///< deleted, or to be removed from the list
};

/// Returns the full paths of the rows' files. A file that is listed twice is included once.
std::vector<std::string> paths_of(const ResultList& list, std::span<const std::size_t> rows);

/// Copies or moves files; when one fails, the others are still done. Of two files with the same
/// name for one folder, the second is refused. When a target is no longer what the user was asked
/// about, the user is asked again.
BatchOutcome transfer_files(std::span<const std::string> paths, const TransferRequest& request,
                            FileOperations& operations, BatchUser& user);

/// Deletes files. `recycle` says for each of them whether it goes to the Recycle Bin.
BatchOutcome delete_files(std::span<const std::string> paths, const std::vector<bool>& recycle,
                          FileOperations& operations, BatchUser& user);

/// Gives one file another name in its folder. The name must have been checked.
BatchOutcome rename_file(const std::string& path, const std::string& name,
                         FileOperations& operations);

/// What became of the file that the viewer shows.
enum class ViewedFile {
  untouched,
  moved,      ///< the same file at another path; viewed_index is its record
  rewritten,  ///< another file has replaced it; viewed_index is that one's record
  gone        ///< no record is viewed any more
};

struct ListChange {
  bool records_changed = false;  ///< files were renamed or moved: the list must be sorted again
  bool rows_refreshed = false;   ///< some rows show another date or size
  bool rows_removed = false;
  std::ptrdiff_t row_to_select = -1;  ///< when rows were removed; -1: none is left
  ViewedFile viewed = ViewedFile::untouched;
};

/// Brings the list up to date with what has happened to files. A moved file's records follow it;
/// those of a file that it replaced are removed. The records of a file that a copy replaced get the
/// copy's facts.
ListChange update_list(ResultList& list, const BatchOutcome& outcome);

}  // namespace tallowmere
