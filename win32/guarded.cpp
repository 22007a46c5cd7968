#include "win32/guarded.h"

#include <windows.h>

#include <new>

namespace tallowmere::win32 {

namespace {

constexpr wchar_t title[] = L"Cannot Continue";
constexpr wchar_t no_memory[] =
    L"There is not enough memory for this. Close other programs and try again.";
constexpr wchar_t no_resources[] =
    L"Windows has too few resources left for this. Close other programs and try again.";

}  // namespace

void tell_failure(const std::exception& error) noexcept {
  const bool memory = dynamic_cast<const std::bad_alloc*>(&error) != nullptr;
  const HWND owner = GetActiveWindow();
  HWND other = nullptr;
  while ((other = FindWindowExW(nullptr, other, L"#32770", title)) != nullptr) {
    if (GetWindowThreadProcessId(other, nullptr) == GetCurrentThreadId()) return;
  }
  MessageBoxW(owner, memory ? no_memory : no_resources, title, MB_OK | MB_ICONEXCLAMATION);
}

}  // namespace tallowmere::win32
