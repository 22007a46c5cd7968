#pragma once

#include <optional>
#include <string>
#include <vector>

#include "dialogs/dialog_context.h"
#include "dialogs/folder_chooser.h"
#include "files/file_batch.h"
#include "files/file_command_texts.h"
#include "files/file_names.h"
#include "files/file_operations.h"
#include "win32/controls.h"

namespace tallowmere {

/// Asks where to copy or move the selected files. The folder used last and the check box are kept
/// between showings.
class frmCopyMove : public FolderChooser {
 public:
  frmCopyMove(HWND owner, const DialogContext& context);

  /// Asks over the owner. The folder that comes back exists: a new one was made by `operations`.
  std::optional<TransferRequest> ask(FileCommand command, const SelectedFiles& files,
                                     FileOperations& operations);

  win32::Label Label1;  ///< what is copied or moved
  win32::TextBox txtNewFolder, txtNewName;
  win32::CheckBox chkConfirm;
  win32::Label lblTarget;
  win32::Button cmdOK, cmdCancel;

 protected:
  void on_shown() override { Dir1.focus(); }

 private:
  void find_controls();
  void wire();
  void open_start_folder(const std::string& files_folder);
  TypedFolder target_folder() const;
  void show_target();
  /// Says why not and moves the focus back to the control.
  void refuse(const std::string& prompt, const win32::Control& control);

  void folder_changed() override { show_target(); }
  void waiting_changed() override { cmdOK.enable(!waiting()); }
  void cmdOK_Click();
  void cmdCancel_Click();

  HWND owner_;
  DialogContext context_;
  FileCommand command_ = FileCommand::copy;
  FileOperations* operations_ = nullptr;  ///< while the dialog is shown
  std::string last_folder_;               ///< the folder used last; empty at first
  std::optional<TransferRequest> accepted_;
};

}  // namespace tallowmere
