#pragma once

#include <string>

#include "dialogs/folder_list_box.h"
#include "win32/controls.h"
#include "win32/form.h"

namespace tallowmere {

/// A form with a drive list and a folder list, which go together: the folder list stands on the
/// drive chosen. A drive or folder that cannot be opened is told, and both stay where they were.
class FolderChooser : public win32::Form {
 public:
  win32::ComboBox Drive1;
  FolderListBox Dir1;

 protected:
  FolderChooser(int template_id, HWND owner, const FileSystem& files, int drive_list,
                int folder_list);

  /// Draws the folder list; forms that take other messages hand on the rest to it.
  bool on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;

  /// Fills the drive list afresh; open() comes next.
  void load_drives() const;
  /// Silently; false when it cannot be done.
  bool open(const std::string& drive, const std::string& path);
  /// Of the drive chosen, with its separator.
  std::string drive() const;

  /// Another drive was chosen: opens start_path() when it lies there, else the drive's current
  /// folder.
  void Drive1_Change();
  void Dir1_DblClick();

 private:
  /// Empty for the folder shown.
  virtual std::string start_path() const { return {}; }
  virtual void folder_changed() {}

  bool select_drive(const std::string& drive) const;
  void drive_not_ready(const SystemError& error) const;

  std::string drive_shown_;  ///< the drive that Dir1 stands on
};

}  // namespace tallowmere
