#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "results/result_list.h"
#include "shell/file_operations.h"

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

/// The user, as work on several files meets them.
class BatchUser {
 public:
  virtual ~BatchUser() = default;
  /// Before each file; false: the rest is not wanted any more.
  virtual bool at_file(std::size_t index, std::size_t count, const std::string& path) = 0;
  /// During a long file, in bytes; false: the file is given up, and the rest.
  virtual bool at_bytes(std::int64_t done, std::int64_t total) = 0;
  virtual ReplaceAnswer ask_replace(const ReplaceQuestion& question) = 0;
};

struct FileFault {
  std::string path;
  std::string reason;
};

/// What became of the file that the viewer shows.
enum class ViewedFile {
  untouched,
  moved,      ///< the same file at another path; viewed_index is its record
  rewritten,  ///< another file has taken its place; viewed_index is that one's record
  gone        ///< no record is viewed any more
};

struct BatchOutcome {
  std::size_t selected = 0;
  std::size_t done = 0;
  std::vector<FileFault> faults;
  bool stopped = false;          ///< by the user, before all files had their turn
  bool records_changed = false;  ///< renamed or moved: the list is to be sorted again
  bool rows_refreshed = false;   ///< some show another date or size
  bool rows_removed = false;
  std::ptrdiff_t row_to_select = -1;  ///< when rows were removed; -1: none is left
  ViewedFile viewed = ViewedFile::untouched;
};

/// Copies or moves the files of the rows; one that fails does not keep the others back. Two files
/// of one name do not both come into one folder: the second is refused. A moved file's record
/// follows it. When a listed file was replaced, its record goes after a move and tells the new
/// date and size after a copy.
BatchOutcome transfer_files(ResultList& list, std::span<const std::size_t> rows,
                            const TransferRequest& request, FileOperations& operations,
                            BatchUser& user);

/// Deletes the files of the rows and removes the rows of those that are gone. `recycle` tells for
/// each of the rows, in their order, whether its file goes into the Recycle Bin.
BatchOutcome delete_files(ResultList& list, std::span<const std::size_t> rows,
                          const std::vector<bool>& recycle, FileOperations& operations,
                          BatchUser& user);

/// Gives one file another name in its folder. The name has been found good.
BatchOutcome rename_file(ResultList& list, std::size_t row, const std::string& name,
                         FileOperations& operations);

/// Removes rows and leaves the files alone.
BatchOutcome remove_rows(ResultList& list, std::span<const std::size_t> rows);

/// Where to go from `row` once `removed` of `count` rows are gone: the row itself, else the one
/// that takes its place, else the last; -1 when no row is left. `removed` is ascending.
std::ptrdiff_t row_after_removal(std::size_t row, std::span<const std::size_t> removed,
                                 std::size_t count);

}  // namespace tallowmere
