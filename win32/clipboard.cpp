#include "win32/clipboard.h"

#include <cstring>
#include <cwchar>

#include "win32/text.h"

namespace tallowmere::win32 {

namespace {

constexpr ULONGLONG patience_ms = 1000;
constexpr DWORD interval_ms = 10;

/// Copies a text into memory that the clipboard can take over; null when there is none left.
HGLOBAL global_text(const std::wstring& text) {
  const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
  if (memory == nullptr) return nullptr;
  std::memcpy(GlobalLock(memory), text.c_str(), bytes);
  GlobalUnlock(memory);
  return memory;
}

}  // namespace

Clipboard::Clipboard(HWND owner) {
  const ULONGLONG end = GetTickCount64() + patience_ms;
  while (!(opened_ = OpenClipboard(owner) != FALSE) && GetTickCount64() < end) Sleep(interval_ms);
}

Clipboard::~Clipboard() {
  if (opened_) CloseClipboard();
}

std::optional<std::string> Clipboard::text() const {
  const HANDLE data = opened_ ? GetClipboardData(CF_UNICODETEXT) : nullptr;
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

bool Clipboard::set_text(std::string_view text) {
  if (!opened_) return false;
  if (text.empty()) return EmptyClipboard() != FALSE;
  const HGLOBAL memory = global_text(wide(text));
  if (memory == nullptr) return false;
  if (EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, memory) != nullptr) return true;
  GlobalFree(memory);
  return false;
}

std::optional<std::string> clipboard_text(HWND owner) {
  return Clipboard(owner).text();
}

}  // namespace tallowmere::win32
