#include "win32/fonts.h"

#include <algorithm>
#include <cmath>

#include "win32/text.h"

namespace tallowmere::win32 {

namespace {

int CALLBACK stop_at_first(const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM) {
  return 0;
}

bool is_installed(LOGFONTW font) {
  const HDC screen = GetDC(nullptr);
  const int all_seen = EnumFontFamiliesExW(screen, &font, &stop_at_first, 0, 0);
  ReleaseDC(nullptr, screen);
  return all_seen == 0;
}

}  // namespace

Font::Font(std::string_view face, double points, int dpi) {
  const std::wstring name = wide(face);
  if (name.empty() || name.size() >= LF_FACESIZE || !(points >= 1 && points <= 1000)) return;
  LOGFONTW font{};
  font.lfHeight = -static_cast<LONG>(std::lround(points * dpi / 72));
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  std::copy(name.begin(), name.end(), font.lfFaceName);
  // By its name alone, a missing face would become a proportional one. With the name of an
  // installed proportional face, the pitch could count for more than the name.
  if (!is_installed(font)) font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
  font_ = CreateFontIndirectW(&font);
}

std::string Font::face() const {
  if (font_ == nullptr) return {};
  wchar_t name[LF_FACESIZE] = L"";
  const HDC screen = GetDC(nullptr);
  const HGDIOBJ old_font = SelectObject(screen, font_);
  GetTextFaceW(screen, LF_FACESIZE, name);
  SelectObject(screen, old_font);
  ReleaseDC(nullptr, screen);
  return narrow(name);
}

}  // namespace tallowmere::win32
