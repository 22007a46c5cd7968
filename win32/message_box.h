#pragma once

#include <windows.h>

#include <string_view>

namespace tallowmere::win32 {

enum class BoxIcon : UINT {
  none = 0,
  information = MB_ICONINFORMATION,
  exclamation = MB_ICONEXCLAMATION
};
enum class BoxButtons : UINT { ok = MB_OK, retry_cancel = MB_RETRYCANCEL };
enum class BoxAnswer { ok = IDOK, cancel = IDCANCEL, retry = IDRETRY };

/// Shows a message box over `owner` (UTF-8 texts) and waits for the answer.
BoxAnswer message_box(HWND owner, std::string_view prompt, std::string_view title, BoxIcon icon,
                      BoxButtons buttons = BoxButtons::ok);

}  // namespace tallowmere::win32
