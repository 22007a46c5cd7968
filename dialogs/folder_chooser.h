#pragma once

#include <string>

#include "dialogs/folder_list_box.h"
#include "win32/controls.h"

namespace tallowmere {

/// The drive list and the folder list of a form, which go together: the folder list stands on the
/// drive chosen. A drive or folder that cannot be opened is told, and both stay where they were.
class FolderChooser {
 public:
  /// The form owns both and finds them before it calls anything here.
  FolderChooser(win32::ComboBox& drives, FolderListBox& folders) : Drive1(drives), Dir1(folders) {}

  /// Fills the drive list afresh; open() comes next.
  void load_drives() const;
  /// Silently; false when it cannot be done.
  bool open(const std::string& drive, const std::string& path);
  /// Of the drive chosen, with its separator.
  std::string drive() const;

  /// Another drive was chosen: opens `path` when it lies there, else the drive's current folder.
  /// An empty `path` stands for the folder shown.
  void Drive1_Change(std::string path);
  void Dir1_DblClick();

 private:
  bool select_drive(const std::string& drive) const;
  void drive_not_ready(const SystemError& error) const;

  win32::ComboBox& Drive1;
  FolderListBox& Dir1;
  std::string drive_shown_;  ///< the drive that Dir1 stands on
};

}  // namespace tallowmere
