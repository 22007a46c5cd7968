#pragma once

#include "app/viewer_box.h"
#include "app/viewer_pane.h"
#include "shell/settings.h"
#include "win32/fonts.h"

namespace tallowmere {

/// The viewer's font, of the face and size in the settings.
class ViewerFont {
 public:
  /// All three outlive the font.
  ViewerFont(ViewerBox& box, ViewerPane& pane, ShellState& shell)
      : box_(box), pane_(pane), shell_(shell) {}

  /// Gives the box the font for the DPI of its window. A face or size that the system refuses
  /// leaves the font as it is.
  void apply();
  /// The same while a file may show: the text on view stays.
  void change();
  void make_larger();
  void make_smaller();

 private:
  void set_size(double points);

  ViewerBox& box_;
  ViewerPane& pane_;
  ShellState& shell_;
  win32::Font font_;
};

}  // namespace tallowmere
