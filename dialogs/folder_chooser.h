#pragma once

#include <functional>
#include <string>
#include <utility>

#include "dialogs/folder_finder.h"
#include "dialogs/folder_list_box.h"
#include "win32/controls.h"
#include "win32/form.h"

namespace tallowmere {

/// A form with a drive list and a folder list, which go together: the drive list shows the drive
/// that the folder lies on, none for a folder on a share. A message says what cannot be opened, and
/// both stay where they were. While a disk does not answer, the form can still be used.
class FolderChooser : public win32::Form {
 public:
  win32::ComboBox Drive1;
  FolderListBox Dir1;

 protected:
  using Look = FolderFinder::Look;
  using Failed = std::function<void(const SystemError&)>;

  FolderChooser(int template_id, HWND owner, const FileSystem& files, int drive_list,
                int folder_list);

  /// Draws the folder list; forms that take other messages hand on the rest to it.
  bool on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;

  /// Fills the drive list again and shows the drive of `path` there.
  void load_drives(const std::string& path);
  /// Opens the folder that the form begins with, without messages.
  void open_first(Look look);
  /// Opens the folder that the user asks for, now or when the disk answers; the last one asked for
  /// counts.
  void open(Look look, Failed failed);
  void give_up();
  /// A folder is awaited.
  bool waiting() const { return finder_.waiting(); }
  /// A folder that the user has asked for is awaited.
  bool asked() const { return waiting() && asked_; }
  /// Runs `then` when the awaited folder shows: not when it cannot be opened, nor when another one
  /// is asked for.
  void when_found(Handler then) { then_ = std::move(then); }
  /// The drive chosen, with its separator; empty when there is none.
  std::string drive() const;

  /// Another drive was chosen: opens start_path() when it lies there, else the drive's current
  /// folder.
  void Drive1_Change();
  void Dir1_DblClick();

 private:
  /// Empty for the folder shown.
  virtual std::string start_path() const { return {}; }
  virtual void folder_changed() {}
  virtual void waiting_changed() {}

  void found(FolderLookup& lookup, const Failed& failed);
  void show_drive(const std::string& path);
  void drive_not_ready(const SystemError& error) const;

  FolderFinder finder_;
  bool asked_ = false;
  Handler then_;
  std::string drive_asked_;  ///< the drive of the folder shown or awaited
};

}  // namespace tallowmere
