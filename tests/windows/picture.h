#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

namespace tallowmere {

/// The pixels of a window's client area with its controls, as they stand on the screen.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;

  bool operator==(const Picture&) const = default;
};

inline Picture picture_of(HWND window) {
  UpdateWindow(window);
  RECT area;
  GetClientRect(window, &area);
  Picture picture{static_cast<int>(area.right), static_cast<int>(area.bottom), {}};
  picture.pixels.resize(static_cast<std::size_t>(picture.width * picture.height));
  BITMAPINFO info{};
  info.bmiHeader = {
      sizeof info.bmiHeader, picture.width, -picture.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  const HDC source = GetDC(window);
  const HDC target = CreateCompatibleDC(source);
  const HBITMAP bitmap = CreateCompatibleBitmap(source, picture.width, picture.height);
  const HGDIOBJ old_bitmap = SelectObject(target, bitmap);
  BitBlt(target, 0, 0, picture.width, picture.height, source, 0, 0, SRCCOPY);
  SelectObject(target, old_bitmap);
  GetDIBits(target, bitmap, 0, static_cast<UINT>(picture.height), picture.pixels.data(), &info,
            DIB_RGB_COLORS);
  DeleteObject(bitmap);
  DeleteDC(target);
  ReleaseDC(window, source);
  return picture;
}

}  // namespace tallowmere
