#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

namespace tallowmere {

/// The pixels of a window's client area with its controls, as they are on the screen.
inline std::vector<std::uint32_t> picture_of(HWND window) {
  UpdateWindow(window);
  RECT area;
  GetClientRect(window, &area);
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, area.right, -area.bottom, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  const HDC source = GetDC(window);
  const HDC target = CreateCompatibleDC(source);
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(target, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  SelectObject(target, bitmap);
  BitBlt(target, 0, 0, area.right, area.bottom, source, 0, 0, SRCCOPY);
  GdiFlush();
  const auto* first = static_cast<const std::uint32_t*>(bits);
  const std::vector<std::uint32_t> pixels(first, first + area.right * area.bottom);
  DeleteDC(target);
  DeleteObject(bitmap);
  ReleaseDC(window, source);
  return pixels;
}

}  // namespace tallowmere
