#pragma once

#include <memory>

#include "dialogs/frmExamples.h"
#include "dialogs/help_screen.h"

namespace tallowmere {

/// Shows how to write search criteria. Opens the examples, and owns them.
class frmHints : public HelpScreen {
 public:
  explicit frmHints(HWND owner) : HelpScreen(owner, searching_hints()) {}

  /// Shows the hints over `owner`; both screens are centred over the main window.
  void show(HWND owner, HWND main_window) {
    main_window_ = main_window;
    HelpScreen::show(owner, main_window);
  }
  /// Created on first use.
  frmExamples& examples();

  /// `lblExamples` is the last of them.
  const std::vector<win32::Button>& lblHypertext = topics();
  const std::vector<win32::Label>& Label1 = paragraphs();
  const win32::Button& lblExamples = topics().back();

 protected:
  void link_Click() override { lblExamples_Click(); }

 private:
  void lblExamples_Click() { examples().show(handle(), main_window_); }

  HWND main_window_ = nullptr;
  std::unique_ptr<frmExamples> examples_;
};

}  // namespace tallowmere
