#pragma once

#include "viewer/hit_navigation.h"
#include "viewer/viewer_host.h"

namespace tallowmere {

/// Keeps what is on view in the text box while its lines are broken again, as by another size or
/// font: made before, restored after. A selection on view is then in the middle; otherwise the
/// first visible line keeps its place.
class ViewAnchor {
 public:
  explicit ViewAnchor(const TextFace& face);
  void restore(TextFace& face, HitNavigation& navigation) const;

 private:
  int top_character_;
  bool selection_visible_;
};

}  // namespace tallowmere
