#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <utility>

namespace tallowmere::win32 {

/// Owns a font. The windows that use it must go, or take another, before it does.
class Font {
 public:
  Font() = default;
  /// A face at a size in points for a screen of `dpi`; one of fixed pitch in place of a face that
  /// is not installed. Holds no font when the size is absurd or the system refuses.
  Font(std::string_view face, double points, int dpi);
  explicit Font(const LOGFONTW& font) : font_(CreateFontIndirectW(&font)) {}
  ~Font() { reset(); }
  Font(Font&& other) noexcept : font_(std::exchange(other.font_, nullptr)) {}
  Font& operator=(Font&& other) noexcept {
    std::swap(font_, other.font_);
    return *this;
  }

  HFONT handle() const { return font_; }
  /// The face that the system took; empty without a font.
  std::string face() const;
  explicit operator bool() const { return font_ != nullptr; }

 private:
  void reset() {
    if (font_ != nullptr) DeleteObject(font_);
  }
  HFONT font_ = nullptr;
};

}  // namespace tallowmere::win32
