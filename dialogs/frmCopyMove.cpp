#include "dialogs/frmCopyMove.h"

#include "dialogs/resource.h"
#include "win32/hourglass.h"
#include "win32/message_box.h"

namespace tallowmere {

frmCopyMove::frmCopyMove(HWND owner, const DialogContext& context)
    : FolderChooser(IDD_COPY_MOVE, owner, context.files, IDC_COPY_DRIVE1, IDC_COPY_DIR1),
      owner_(owner),
      context_(context) {
  find_controls();
  wire();
  chkConfirm.set_checked(true);
}

void frmCopyMove::find_controls() {
  Label1 = win32::Label(item(IDC_COPY_LABEL1));
  txtNewFolder = win32::TextBox(item(IDC_COPY_FOLDER));
  txtNewName = win32::TextBox(item(IDC_COPY_NAME));
  chkConfirm = win32::CheckBox(item(IDC_COPY_CONFIRM));
  lblTarget = win32::Label(item(IDC_COPY_TARGET));
  cmdOK = win32::Button(item(IDOK));
  cmdCancel = win32::Button(item(IDCANCEL));
}

void frmCopyMove::wire() {
  command(IDC_COPY_FOLDER, EN_CHANGE, [this] { show_target(); });
  command(IDC_COPY_NAME, EN_CHANGE, [this] { show_target(); });
  clicked(IDOK, [this] { cmdOK_Click(); });
  clicked(IDCANCEL, [this] { cmdCancel_Click(); });
}

std::optional<TransferRequest> frmCopyMove::ask(FileCommand command, const SelectedFiles& files,
                                                FileOperations& operations) {
  const bool moving = command == FileCommand::move;
  command_ = command;
  operations_ = &operations;
  accepted_.reset();
  SetWindowTextW(handle(), moving ? L"Move Files" : L"Copy Files");
  Label1.set_text((moving ? "Move " : "Copy ") + files_text(files) + " to:");
  cmdOK.set_text(moving ? "&Move" : "&Copy");
  txtNewFolder.set_text("");
  txtNewName.set_text("");
  txtNewName.enable(files.count == 1);
  open_start_folder(files.folder);
  show_target();
  show_modal(owner_);
  operations_ = nullptr;
  return accepted_;
}

void frmCopyMove::open_start_folder(const std::string& files_folder) {
  load_drives(files_folder);
  const std::vector<std::string> folders{last_folder_, files_folder,
                                         context_.program_folder.substr(0, 3)};
  open_first([folders](const FileSystem& files, const auto& go_on) {
    return look_up_first(files, folders, go_on);
  });
}

TypedFolder frmCopyMove::target_folder() const {
  return typed_folder(Dir1.path(), txtNewFolder.text());
}

void frmCopyMove::show_target() {
  lblTarget.set_text(target_folder().path + txtNewName.text());
}

void frmCopyMove::refuse(const std::string& prompt, const win32::Control& control) {
  win32::message_box(handle(), prompt, failure_title(command_), win32::BoxIcon::exclamation);
  move_focus(control.handle());
}

void frmCopyMove::cmdOK_Click() {
  if (waiting()) return;  // nothing goes to the folder that was open before
  const TypedFolder folder = target_folder();
  const std::string name = txtNewName.enabled() ? txtNewName.text() : std::string();
  if (!folder.fault.empty()) return refuse(folder.fault, txtNewFolder);
  if (!name.empty() && !name_fault(name).empty()) return refuse(name_fault(name), txtNewName);
  std::optional<SystemError> error;
  {
    const win32::Hourglass hourglass;
    error = operations_->create_folder(folder.path);
  }
  if (error) {
    return refuse(error->text + " - encountered while trying to MAKE FOLDER " + folder.path,
                  txtNewFolder);
  }
  last_folder_ = folder.path;
  accepted_ = TransferRequest{command_, folder.path, name, chkConfirm.checked()};
  context_.cancelled = false;
  hide_from(cmdOK.handle());
}

void frmCopyMove::cmdCancel_Click() {
  give_up();
  context_.cancelled = true;
  hide_from(cmdOK.handle());
}

}  // namespace tallowmere
