#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace tallowmere::win32 {

/// The system's clipboard, open to this program alone for as long as the object lives.
class Clipboard {
 public:
  /// Opens the clipboard; while another program has it open, tries again for up to a second.
  /// `owner` may be null.
  explicit Clipboard(HWND owner);
  ~Clipboard();
  Clipboard(const Clipboard&) = delete;
  Clipboard& operator=(const Clipboard&) = delete;

  /// False when another program has kept it open. The functions below then do nothing.
  explicit operator bool() const { return opened_; }

  /// Returns the clipboard's text; nothing when it holds none.
  std::optional<std::string> text() const;
  /// Replaces all that the clipboard holds; an empty text only clears it. False on failure: the
  /// clipboard then holds what it held before, or nothing.
  bool set_text(std::string_view text);

 private:
  bool opened_ = false;
};

/// Returns the clipboard's text; nothing when it holds none or another program keeps it open.
std::optional<std::string> clipboard_text(HWND owner);

}  // namespace tallowmere::win32
