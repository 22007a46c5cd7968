#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tallowmere::win32 {

struct FontFace {
  std::string name;
  bool fixed_pitch = false;
};

/// Every face once, as installed at this moment, in the order of their names without regard to
/// case. Faces for vertical writing are left out.
std::vector<FontFace> installed_faces();

/// The face of this name, without regard to case; -1 when there is none.
int find_face(const std::vector<FontFace>& faces, std::string_view name);
/// The first face, from `start` round the end, whose name begins so; -1 when there is none.
int find_face_beginning(const std::vector<FontFace>& faces, std::string_view text, int start);

}  // namespace tallowmere::win32
