#include "viewer/view_anchor.h"

namespace tallowmere {

ViewAnchor::ViewAnchor(const TextFace& face) {
  const int top = face.first_visible_line();
  const int line = face.line_from_char(face.selection().start);
  top_character_ = face.line_index(top);
  selection_visible_ =
      face.selection().length > 0 && line >= top && line < top + face.visible_lines();
}

void ViewAnchor::restore(TextFace& face, HitNavigation& navigation) const {
  if (selection_visible_) {
    navigation.center_highlight();
  } else {
    face.set_first_visible_line(face.line_from_char(top_character_));
  }
}

}  // namespace tallowmere
