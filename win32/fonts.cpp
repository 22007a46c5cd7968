#include "win32/fonts.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "win32/text.h"

namespace tallowmere::win32 {

Font::Font(std::string_view face, double points, int dpi) {
  const std::wstring name = wide(face);
  if (name.empty() || name.size() >= LF_FACESIZE || !(points >= 1 && points <= 1000)) return;
  LOGFONTW font{};
  font.lfHeight = -static_cast<LONG>(std::lround(points * dpi / 72));
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  std::copy(name.begin(), name.end(), font.lfFaceName);
  font_ = CreateFontIndirectW(&font);
}

}  // namespace tallowmere::win32
