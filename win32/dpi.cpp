#include "win32/dpi.h"

namespace tallowmere::win32 {

namespace {

/// Finds a function that not every Windows has; null without it.
template <typename Function>
Function function_of(HMODULE library, const char* name) {
  if (library == nullptr) return nullptr;
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

/// Finds a function of user32 that Windows before 10 lacks; null there.
template <typename Function>
Function user32_function(const char* name) {
  return function_of<Function>(GetModuleHandleW(L"user32.dll"), name);
}

using GetSystemMetricsForDpi = int(WINAPI*)(int, UINT);

GetSystemMetricsForDpi metrics_for_dpi() {
  static const auto get = user32_function<GetSystemMetricsForDpi>("GetSystemMetricsForDpi");
  return get;
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

int monitor_dpi(HMONITOR monitor) {
  // Windows before 8.1 lacks this library; then it must not come from the program's folder.
  constexpr DWORD search_system_folder = 0x800;  // LOAD_LIBRARY_SEARCH_SYSTEM32
  static const HMODULE library = LoadLibraryExW(L"shcore.dll", nullptr, search_system_folder);
  using GetDpiForMonitor = HRESULT(WINAPI*)(HMONITOR, int, UINT*, UINT*);
  static const auto get_dpi = function_of<GetDpiForMonitor>(library, "GetDpiForMonitor");
  constexpr int effective_dpi = 0;
  UINT across = 0;
  UINT down = 0;
  if (get_dpi == nullptr || FAILED(get_dpi(monitor, effective_dpi, &across, &down))) {
    return system_dpi();
  }
  return static_cast<int>(across);
}

int hidden_frame(int dpi) {
  // The frame of a window that is not shown yet cannot be measured (DWMWA_EXTENDED_FRAME_BOUNDS).
  if (metrics_for_dpi() == nullptr) return 0;
  return metrics(SM_CXSIZEFRAME, dpi) + metrics(SM_CXPADDEDBORDER, dpi) - metrics(SM_CXBORDER, dpi);
}

int metrics(int index, int dpi) {
  const GetSystemMetricsForDpi get = metrics_for_dpi();
  return get != nullptr ? get(index, static_cast<UINT>(dpi)) : GetSystemMetrics(index);
}

}  // namespace tallowmere::win32
