#pragma once

#include <windows.h>

#include <string_view>

namespace tallowmere::win32 {

enum class BoxIcon : UINT {
  none = 0,
  question = MB_ICONQUESTION,
  exclamation = MB_ICONEXCLAMATION
};
enum class BoxButtons : UINT {
  ok = MB_OK,
  ok_cancel = MB_OKCANCEL,
  retry_cancel = MB_RETRYCANCEL,
  yes_no = MB_YESNO,
  no_yes = MB_YESNO | MB_DEFBUTTON2  ///< Enter means no
};
enum class BoxAnswer { ok = IDOK, cancel = IDCANCEL, retry = IDRETRY, yes = IDYES, no = IDNO };

/// Shows a message box over `owner` (UTF-8 texts) and waits for the answer.
BoxAnswer message_box(HWND owner, std::string_view prompt, std::string_view title, BoxIcon icon,
                      BoxButtons buttons = BoxButtons::ok);

}  // namespace tallowmere::win32
