#include "win32/clipboard.h"

#include <cwchar>

#include "win32/text.h"

namespace tallowmere::win32 {

namespace {

class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND owner) : opened_(OpenClipboard(owner) != FALSE) {}
  ~OpenedClipboard() {
    if (opened_) CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  explicit operator bool() const { return opened_; }

 private:
  bool opened_;
};

}  // namespace

std::optional<std::string> clipboard_text(HWND owner) {
  const OpenedClipboard clipboard(owner);
  if (!clipboard) return std::nullopt;
  const HANDLE data = GetClipboardData(CF_UNICODETEXT);
  if (data == nullptr) return std::nullopt;
  const wchar_t* text = static_cast<const wchar_t*>(GlobalLock(data));
  if (text == nullptr) return std::nullopt;
  // The block may be longer than the text, and the final zero may be missing.
  const std::size_t room = GlobalSize(data) / sizeof(wchar_t);
  const wchar_t* end = std::wmemchr(text, L'\0', room);
  std::string result = narrow({text, end != nullptr ? static_cast<std::size_t>(end - text) : room});
  GlobalUnlock(data);
  return result;
}

}  // namespace tallowmere::win32
