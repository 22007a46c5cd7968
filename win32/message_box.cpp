#include "win32/message_box.h"

#include "win32/text.h"

namespace tallowmere::win32 {

BoxAnswer message_box(HWND owner, std::string_view prompt, std::string_view title, BoxIcon icon,
                      BoxButtons buttons) {
  const int answer = MessageBoxW(owner, wide(prompt).c_str(), wide(title).c_str(),
                                 static_cast<UINT>(icon) | static_cast<UINT>(buttons));
  // 0 means that the box could not be shown.
  return answer == 0 ? BoxAnswer::cancel : static_cast<BoxAnswer>(answer);
}

}  // namespace tallowmere::win32
