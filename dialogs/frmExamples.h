#pragma once

#include "dialogs/help_screen.h"

namespace tallowmere {

/// Shows lines of search criteria and what they find.
class frmExamples : public HelpScreen {
 public:
  explicit frmExamples(HWND owner) : HelpScreen(owner, criteria_examples()) {}

  const std::vector<win32::Button>& lblExample = topics();
};

}  // namespace tallowmere
