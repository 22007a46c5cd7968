#include "app/main_class.h"

#include <windows.h>

#include "app/resource.h"

namespace tallowmere {

namespace {

/// Loads the icon unshared: the system would hand out the one that it loaded first, whatever its
/// size. The class keeps it until the program ends.
HICON load_icon(int width_metric, int height_metric) {
  const HANDLE icon =
      LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_TALLOWMERE), IMAGE_ICON,
                 GetSystemMetrics(width_metric), GetSystemMetrics(height_metric), LR_DEFAULTCOLOR);
  return static_cast<HICON>(icon);
}

}  // namespace

int main_window_template() {
  constexpr const wchar_t* name = L"Tallowmere32";
  WNDCLASSEXW window_class{};
  window_class.cbSize = sizeof window_class;
  window_class.style = CS_DBLCLKS;
  const HINSTANCE program = GetModuleHandleW(nullptr);
  if (GetClassInfoExW(program, name, &window_class)) return IDD_FORM1;
  window_class.lpfnWndProc = DefDlgProcW;
  window_class.cbWndExtra = DLGWINDOWEXTRA;
  window_class.hInstance = program;
  window_class.hIcon = load_icon(SM_CXICON, SM_CYICON);
  window_class.hIconSm = load_icon(SM_CXSMICON, SM_CYSMICON);
  window_class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  window_class.lpszClassName = name;
  RegisterClassExW(&window_class);
  return IDD_FORM1;
}

}  // namespace tallowmere
