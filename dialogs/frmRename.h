#pragma once

#include <functional>
#include <string>

#include "win32/controls.h"
#include "win32/form.h"

namespace tallowmere {

/// Asks for a file's new name.
class frmRename : public win32::Form {
 public:
  /// Does the renaming and says what went wrong; false: the dialog stays for another name.
  using Rename = std::function<bool(const std::string& new_name)>;

  explicit frmRename(HWND owner);

  void show(const std::string& old_name, Rename rename);

  win32::TextBox txtOldName, txtNewName;
  win32::Button cmdOK, cmdCancel;

 protected:
  void on_shown() override { Form_Activate(); }

 private:
  void Form_Activate();
  void cmdOK_Click();
  void cmdCancel_Click();

  HWND owner_;
  Rename rename_;  ///< while the dialog is shown
};

}  // namespace tallowmere
