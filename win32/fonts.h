#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <utility>

namespace tallowmere::win32 {

/// Owns a font. Windows that use it must be destroyed, or take another font, before it is.
class Font {
 public:
  Font() = default;
  /// Makes a face at a size in points for a screen of `dpi`; one of fixed pitch replaces a face
  /// that is not installed. Holds no font when the size is not from 1 to 1000 or the system
  /// refuses.
  Font(std::string_view face, double points, int dpi);
  explicit Font(const LOGFONTW& font) : font_(CreateFontIndirectW(&font)) {}
  ~Font() { reset(); }
  Font(Font&& other) noexcept : font_(std::exchange(other.font_, nullptr)) {}
  Font& operator=(Font&& other) noexcept {
    std::swap(font_, other.font_);
    return *this;
  }

  HFONT handle() const { return font_; }
  /// Returns the face that the system took; empty without a font.
  std::string face() const;
  explicit operator bool() const { return font_ != nullptr; }

 private:
  void reset() {
    if (font_ != nullptr) DeleteObject(font_);
  }
  HFONT font_ = nullptr;
};

}  // namespace tallowmere::win32
