#pragma once

#include "dialogs/help_drawing.h"
#include "win32/controls.h"
#include "win32/form.h"

namespace tallowmere {

/// Shows the program's name and version.
class frmAbout : public win32::Form {
 public:
  explicit frmAbout(HWND owner);

  /// Shows the screen centred over `owner`, until the user leaves it.
  void show(HWND owner) { show_modal(owner); }

  win32::Label Label1;  ///< name and version
  win32::Label Label2;  ///< what the program is
  win32::Control Image1;
  win32::Button Command1;

 protected:
  void on_dpi_changed(int, int) override { set_title_font(); }

 private:
  void set_title_font();
  void show_icon();
  void Command1_Click();

  win32::Font title_font_;
};

}  // namespace tallowmere
