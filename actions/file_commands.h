#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/dialog_context.h"
#include "dialogs/frmCopyMove.h"
#include "dialogs/frmProgress.h"
#include "dialogs/frmRename.h"
#include "dialogs/frmReplace.h"
#include "files/file_batch.h"
#include "results/result_list.h"
#include "win32/file_operations.h"

namespace tallowmere {

/// What the main window does after the file commands have changed its list. Called when the list is
/// as it stays, in the order below; each at most once a command.
class FileCommandHost {
 public:
  virtual ~FileCommandHost() = default;

  /// Rows are gone: shows the others and selects `row` alone, -1 for none.
  virtual void rows_removed(std::ptrdiff_t row) = 0;
  /// Some rows show another date or size: paints them again. The selection stays.
  virtual void rows_refreshed() = 0;
  /// The viewer follows its file; viewed_index is right already.
  virtual void viewed_file_changed(ViewedFile what) = 0;
  /// Files were renamed or moved: sorts again, as mnuSort_Click(sort_type()).
  virtual void records_changed() = 0;
};

/// Copying, moving, renaming, deleting and removing files, with their dialogs, questions and
/// messages. Files are meant by their full paths, each given once: every dialog and every longer
/// work serves events, in which rows may move. The main window is disabled meanwhile.
class FileCommands {
 public:
  /// All of them outlive the commands.
  FileCommands(HWND window, ResultList& list, const DialogContext& context, FileCommandHost& host);

  /// Asks where to, then moves or copies.
  void move_copy_dialog(FileCommand command, std::vector<std::string> paths);
  /// Asks for a new name.
  void rename_dialog(const std::string& path);
  /// Gives a file the name typed into its row; false, after a message, when it keeps the old one.
  bool rename_file(const std::string& path, const std::string& new_name);
  /// Deletes from the disk what the user confirms.
  void delete_files(std::vector<std::string> paths);
  /// Removes from the list what the user confirms.
  void remove_files(std::vector<std::string> paths);

  // These show no messages.
  /// Why the program cannot work with a file: it is gone, or a folder now.
  std::optional<SystemError> fault_of(const std::string& path);
  /// Puts a copy of a file in the place of `target`, which need not be there.
  std::optional<SystemError> replace(const std::string& source, const std::string& target);

 private:
  class User;

  bool rename(HWND owner, const std::string& path, const std::string& new_name);
  ReplaceAnswer ask_replace(const ReplaceQuestion& question);
  /// Runs work on files in the background, with the progress window.
  void work(const std::string& caption,
            const std::function<void(FileOperations&, BatchUser&)>& step);
  /// Brings the list up to date and reports what failed, over `owner`.
  void finish(HWND owner, FileCommand command, const BatchOutcome& outcome);
  void serve_events();
  bool confirm(const std::string& question, std::string_view title, bool for_good) const;

  HWND window_;
  ResultList& list_;
  DialogContext context_;
  FileCommandHost& host_;
  // Made when they are first shown.
  std::unique_ptr<frmCopyMove> frmCopyMove_;
  std::unique_ptr<frmRename> frmRename_;
  std::unique_ptr<frmReplace> frmReplace_;
  std::unique_ptr<frmProgress> frmProgress_;
};

}  // namespace tallowmere
