#pragma once

#include <windows.h>

#include <commctrl.h>

namespace tallowmere {

inline constexpr UINT lvfi_substring = 0x0004;  ///< LVFI_SUBSTRING, as keys come on Windows

/// The row that the form of a list view finds, asked as the view would ask it.
inline LRESULT find_row(HWND list, UINT flags, const wchar_t* text, int start) {
  NMLVFINDITEMW request{};
  request.hdr = {list, static_cast<UINT_PTR>(GetDlgCtrlID(list)), LVN_ODFINDITEMW};
  request.iStart = start;
  request.lvfi.flags = flags;
  request.lvfi.psz = text;
  return SendMessageW(GetParent(list), WM_NOTIFY, request.hdr.idFrom,
                      reinterpret_cast<LPARAM>(&request));
}

}  // namespace tallowmere
