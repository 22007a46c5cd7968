#pragma once

#include <windows.h>

#include <string_view>
#include <utility>

namespace tallowmere::win32 {

/// Owns a font. The windows that use it must go, or take another, before it does.
class Font {
 public:
  Font() = default;
  /// A face at a size in points for a screen of `dpi`; the system chooses what comes nearest. Holds
  /// no font when the size is absurd or the system refuses.
  Font(std::string_view face, double points, int dpi);
  ~Font() { reset(); }
  Font(Font&& other) noexcept : font_(std::exchange(other.font_, nullptr)) {}
  Font& operator=(Font&& other) noexcept {
    std::swap(font_, other.font_);
    return *this;
  }

  HFONT handle() const { return font_; }
  explicit operator bool() const { return font_ != nullptr; }

 private:
  void reset() {
    if (font_ != nullptr) DeleteObject(font_);
  }
  HFONT font_ = nullptr;
};

}  // namespace tallowmere::win32
