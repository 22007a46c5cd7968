#include "win32/font_list.h"

#include <windows.h>

#include <map>

#include "win32/text.h"

namespace tallowmere::win32 {

namespace {

int compare_names(std::wstring_view one, std::wstring_view other) {
  return CompareStringOrdinal(one.data(), static_cast<int>(one.size()), other.data(),
                              static_cast<int>(other.size()), TRUE);
}

struct NameOrder {
  bool operator()(const std::wstring& one, const std::wstring& other) const {
    return compare_names(one, other) == CSTR_LESS_THAN;
  }
};

using PitchByName = std::map<std::wstring, bool, NameOrder>;

/// Adds a face, which the system reports once for each of its character sets.
int CALLBACK add_face(const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM target) {
  const std::wstring name = font->lfFaceName;
  if (!name.empty() && name.front() != L'@') {
    reinterpret_cast<PitchByName*>(target)->emplace(name,
                                                    (font->lfPitchAndFamily & 3) == FIXED_PITCH);
  }
  return 1;  // go on
}

}  // namespace

std::vector<FontFace> installed_faces() {
  PitchByName found;
  LOGFONTW any{};
  any.lfCharSet = DEFAULT_CHARSET;
  const HDC screen = GetDC(nullptr);
  EnumFontFamiliesExW(screen, &any, &add_face, reinterpret_cast<LPARAM>(&found), 0);
  ReleaseDC(nullptr, screen);

  std::vector<FontFace> faces;
  for (const auto& [name, fixed_pitch] : found) faces.push_back({narrow(name), fixed_pitch});
  return faces;
}

int find_face(const std::vector<FontFace>& faces, std::string_view name) {
  const std::wstring wanted = wide(name);
  for (std::size_t i = 0; i < faces.size(); ++i) {
    if (compare_names(wide(faces[i].name), wanted) == CSTR_EQUAL) return static_cast<int>(i);
  }
  return -1;
}

int find_face_beginning(const std::vector<FontFace>& faces, std::string_view text, int start) {
  const std::wstring wanted = wide(text);
  for (std::size_t i = 0; i < faces.size(); ++i) {
    const std::size_t row = (static_cast<std::size_t>(start > 0 ? start : 0) + i) % faces.size();
    const std::wstring name = wide(faces[row].name).substr(0, wanted.size());
    if (compare_names(name, wanted) == CSTR_EQUAL) return static_cast<int>(row);
  }
  return -1;
}

}  // namespace tallowmere::win32
