#pragma once

#include "dialogs/help_screen.h"

namespace tallowmere {

/// Shows questions about the program and their answers.
class frmQTips : public HelpScreen {
 public:
  explicit frmQTips(HWND owner) : HelpScreen(owner, quick_answers()) {}

  const std::vector<win32::Button>& Label1 = topics();
};

}  // namespace tallowmere
