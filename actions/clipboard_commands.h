#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "actions/action_host.h"

namespace tallowmere {

/// The commands that carry text away. A message box says what cannot be done.
class ClipboardCommands {
 public:
  explicit ClipboardCommands(ActionHost& host) : host_(host) {}

  /// Copies or appends the viewer's selected text; without a selection nothing happens.
  void mnuCopyToClipboard_Click(std::string_view selected_text);
  void mnuAppendToClipboard_Click(std::string_view selected_text);
  /// Copies the full paths of the selected rows in the order of the list; none clear the clipboard.
  void mnuCopyFilename_Click(const std::vector<std::string>& paths);

 private:
  enum class Outcome { done, full, in_use, failed };

  Outcome replace_text(std::string_view text);
  Outcome append_text(std::string_view text);
  void tell(Outcome outcome);

  ActionHost& host_;
};

}  // namespace tallowmere
