#include "win32/system_error.h"

#include <windows.h>

#include <string_view>

#include "engine/unicode.h"

namespace tallowmere::win32 {

SystemError system_error(unsigned long code) {
  wchar_t* text = nullptr;
  constexpr DWORD flags =
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  const DWORD length =
      FormatMessageW(flags, nullptr, code, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  std::u16string_view message(reinterpret_cast<const char16_t*>(text), length);
  while (!message.empty() && (message.back() <= u' ' || message.back() == u'.')) {
    message.remove_suffix(1);
  }
  SystemError error{static_cast<int>(code), to_utf8(message)};
  LocalFree(text);
  if (error.text.empty()) error.text = "Error " + std::to_string(code);
  return error;
}

SystemError last_system_error() {
  return system_error(GetLastError());
}

}  // namespace tallowmere::win32
