#pragma once

#include <array>
#include <optional>
#include <string>

#include "dialogs/dialog_context.h"
#include "dialogs/folder_chooser.h"
#include "dialogs/folder_field.h"
#include "shell/file_type_choice.h"
#include "win32/accessible_names.h"
#include "win32/controls.h"
#include "win32/tooltip.h"

namespace tallowmere {

/// Asks which folder and which types of files the search goes through.
class frmPath : public FolderChooser {
 public:
  /// Calls `display_panel_date` after OK, to rebuild the criteria dialog's summary.
  frmPath(HWND owner, const DialogContext& context, Handler display_panel_date);
  ~frmPath() override;

  /// Fills the dialog from the search and shows it over `owner`, centred over the main window.
  void show(HWND owner, HWND main_window);
  bool pre_translate(MSG& message) override;

  FolderField cboFolder;
  win32::CheckBox chkSearchSub, chkHidden, chkOnline;
  win32::Label Label1;
  win32::CheckBox chkFileType;
  std::array<win32::TextBox, user_type_boxes> txtUserFileType;
  std::array<win32::CheckBox, user_type_boxes> chkUserFileType;
  win32::TextBox txtLeaveOut;
  win32::Button Command1, Command2;

 protected:
  void on_shown() override { Form_Activate(); }
  bool on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void on_dpi_changed(int, int) override { tips_.fit(); }

 private:
  static LRESULT CALLBACK type_box_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                        UINT_PTR id, DWORD_PTR form);
  static LRESULT CALLBACK cancel_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                      UINT_PTR id, DWORD_PTR form);
  void find_controls();
  void wire();
  void wire_check_box(int id);
  void set_tips();
  void Form_Load();
  void Form_Activate();
  std::string start_path() const override { return context_.search.path; }
  void folder_changed() override { show_folder(Dir1.path()); }
  void show_folder(const std::string& path);
  void cboFolder_LostFocus();
  void chkFileType_Click();
  void chkUserFileType_Click(int index);
  void txtUserFileType_Change(int index);
  void txtUserFileType_Enter(int index);
  void txtUserFileType_LostFocus(int index);
  void Command1_Click();
  void Command2_Click();

  void show_file_types();
  void show_user_type(int index);
  /// Opens the folder that the field names.
  void open_typed();
  void open_dropped(const std::string& path);
  void open_path(const std::string& path);
  /// Says why the folder cannot be opened, as soon as the focus has settled, and moves the focus
  /// back into the field.
  void refuse_folder(const std::string& message);
  void tell_refusal();
  void accept();
  /// Looks up the description of a valid type; false when the type is not valid.
  bool validate(int index);
  /// Says why the type is not valid and moves the focus back into its box.
  void refuse(int index);
  int type_box_at(HWND window) const;

  DialogContext context_;
  Handler display_panel_date_;
  std::string folder_;      ///< that OK takes
  std::string looked_for_;  ///< the field's text while its folder is awaited
  FileTypeChoice choice_;
  win32::AccessibleNames names_;
  win32::ToolTip tips_{handle()};
  bool showing_ = false;          ///< the boxes change because the choice did
  std::optional<int> to_refuse_;  ///< the box whose refusal waits for the focus to settle
  std::string folder_refusal_;    ///< likewise, what there is to say of the folder
};

}  // namespace tallowmere
