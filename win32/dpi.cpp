#include "win32/dpi.h"

namespace tallowmere::win32 {

namespace {

/// A function of user32 that Windows before 10 lacks; null there.
template <typename Function>
Function user32_function(const char* name) {
  return reinterpret_cast<Function>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

}  // namespace

int system_dpi() {
  static const auto get_dpi = user32_function<UINT(WINAPI*)()>("GetDpiForSystem");
  if (get_dpi != nullptr) return static_cast<int>(get_dpi());
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return dpi > 0 ? dpi : USER_DEFAULT_SCREEN_DPI;
}

int window_dpi(HWND window) {
  static const auto get_dpi = user32_function<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
  const int dpi = get_dpi != nullptr ? static_cast<int>(get_dpi(window)) : 0;
  return dpi > 0 ? dpi : system_dpi();
}

int metrics(int index, int dpi) {
  static const auto get = user32_function<int(WINAPI*)(int, UINT)>("GetSystemMetricsForDpi");
  return get != nullptr ? get(index, static_cast<UINT>(dpi)) : GetSystemMetrics(index);
}

}  // namespace tallowmere::win32
