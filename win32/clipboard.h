#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace tallowmere::win32 {

/// The system's clipboard, open to this program alone for as long as the object lives.
class Clipboard {
 public:
  /// While another program has it open, tries again for up to a second. `owner` may be null.
  explicit Clipboard(HWND owner);
  ~Clipboard();
  Clipboard(const Clipboard&) = delete;
  Clipboard& operator=(const Clipboard&) = delete;

  /// False: another program has kept it. The functions below then do nothing.
  explicit operator bool() const { return opened_; }

  /// Nothing when the clipboard holds no text.
  std::optional<std::string> text() const;
  /// Replaces all that the clipboard holds; by an empty text it is only cleared. False: it could
  /// not be done, and the clipboard holds what it held, or nothing.
  bool set_text(std::string_view text);

 private:
  bool opened_ = false;
};

/// The clipboard's text, or nothing when it holds none or another program keeps it open.
std::optional<std::string> clipboard_text(HWND owner);

}  // namespace tallowmere::win32
