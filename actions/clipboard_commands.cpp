#include "actions/clipboard_commands.h"

#include <optional>

#include "shell/clipboard_text.h"
#include "win32/clipboard.h"

namespace tallowmere {

void ClipboardCommands::mnuCopyToClipboard_Click(std::string_view selected_text) {
  if (!selected_text.empty()) tell(replace_text(selected_text));
}

void ClipboardCommands::mnuAppendToClipboard_Click(std::string_view selected_text) {
  if (!selected_text.empty()) tell(append_text(selected_text));
}

void ClipboardCommands::mnuCopyFilename_Click(const std::vector<std::string>& paths) {
  tell(replace_text(copied_names_text(paths)));
}

ClipboardCommands::Outcome ClipboardCommands::replace_text(std::string_view text) {
  win32::Clipboard clipboard(host_.window());
  if (!clipboard) return Outcome::in_use;
  return clipboard.set_text(text) ? Outcome::done : Outcome::failed;
}

/// Appends the text; between reading and writing, no other program can write.
ClipboardCommands::Outcome ClipboardCommands::append_text(std::string_view text) {
  win32::Clipboard clipboard(host_.window());
  if (!clipboard) return Outcome::in_use;
  const std::optional<std::string> whole = appended_text(clipboard.text().value_or(""), text);
  if (!whole) return Outcome::full;
  return clipboard.set_text(*whole) ? Outcome::done : Outcome::failed;
}

/// Reports a failure once the clipboard is closed: other programs need not wait for the answer.
void ClipboardCommands::tell(Outcome outcome) {
  switch (outcome) {
    case Outcome::done:
      return;
    case Outcome::full:
      return host_.message("Cannot append selected text onto Clipboard.", "Clipboard Is Full");
    case Outcome::in_use:
      return host_.message("Another program is using the Clipboard. Please try again.",
                           "Cannot Open Clipboard");
    case Outcome::failed:
      return host_.message("The text could not be placed onto the Clipboard. Please try again.",
                           "Cannot Copy to Clipboard");
  }
}

}  // namespace tallowmere
