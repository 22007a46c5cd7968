#include "app/main_class.h"

#include <windows.h>

#include "app/resource.h"

namespace tallowmere {

namespace {

HICON load_icon(int width_metric, int height_metric) {
  const HANDLE icon =
      LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_TALLOWMERE), IMAGE_ICON,
                 GetSystemMetrics(width_metric), GetSystemMetrics(height_metric), LR_SHARED);
  return static_cast<HICON>(icon);
}

}  // namespace

/// A second registration fails and does no harm.
int main_window_template() {
  WNDCLASSEXW window_class{};
  window_class.cbSize = sizeof window_class;
  window_class.lpfnWndProc = DefDlgProcW;
  window_class.cbWndExtra = DLGWINDOWEXTRA;
  window_class.hInstance = GetModuleHandleW(nullptr);
  window_class.hIcon = load_icon(SM_CXICON, SM_CYICON);
  window_class.hIconSm = load_icon(SM_CXSMICON, SM_CYSMICON);
  window_class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  window_class.lpszClassName = L"Tallowmere32";
  RegisterClassExW(&window_class);
  return IDD_FORM1;
}

}  // namespace tallowmere
