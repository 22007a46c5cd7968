#pragma once

namespace tallowmere {

/// Which of the list and the viewer has the focus or, while neither has, had it last.
class FocusMarker {
 public:
  void list_got_focus() { current_ = list; }
  void list_lost_focus() { left(list); }
  void viewer_got_focus() { current_ = viewer; }
  void viewer_lost_focus() { left(viewer); }

  bool from_viewer() const {
    return current_ == viewer || (current_ == elsewhere && previous_ == viewer);
  }

 private:
  enum Place { list = 1, viewer = 2, elsewhere = 3 };

  void left(Place place) {
    current_ = elsewhere;
    previous_ = place;
  }

  Place current_ = elsewhere;
  Place previous_ = elsewhere;
};

}  // namespace tallowmere
