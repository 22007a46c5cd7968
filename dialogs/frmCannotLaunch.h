#pragma once

#include <string_view>

#include "win32/controls.h"
#include "win32/form.h"

namespace tallowmere {

/// Reports that a file has no application, and offers to open it as the system would.
class frmCannotLaunch : public win32::Form {
 public:
  explicit frmCannotLaunch(HWND owner);

  /// Shows the box centred over its owner; true when the file is to be opened.
  bool ask(std::string_view prompt);

  win32::Label lblPrompt;
  win32::Control imgIcon;
  win32::Button cmdOpen, cmdCancel;

 protected:
  void on_shown() override;

 private:
  void cmdOpen_Click();

  HWND owner_;
  bool open_ = false;
};

}  // namespace tallowmere
