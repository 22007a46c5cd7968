#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tallowmere::win32 {

struct FontFace {
  std::string name;
  bool fixed_pitch = false;
};

/// Lists each installed face once, in the order of their names, ignoring case. Faces for vertical
/// writing are left out.
std::vector<FontFace> installed_faces();

/// Finds the face of this name, ignoring case; -1 when there is none.
int find_face(const std::vector<FontFace>& faces, std::string_view name);
/// Finds the first face, from `start` round the end, whose name begins with `text`, ignoring case;
/// -1 when there is none.
int find_face_beginning(const std::vector<FontFace>& faces, std::string_view text, int start);

}  // namespace tallowmere::win32
