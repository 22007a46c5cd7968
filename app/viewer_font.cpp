#include "app/viewer_font.h"

#include <utility>

#include "shell/font_sizes.h"
#include "win32/dpi.h"

namespace tallowmere {

void ViewerFont::apply() {
  win32::Font font(shell_.font_name, shell_.font_size, win32::window_dpi(box_.handle()));
  if (!font) return;
  box_.set_font(font.handle());
  font_ = std::move(font);
}

void ViewerFont::change() {
  pane_.keep_view([this] { apply(); });
}

void ViewerFont::make_larger() {
  set_size(larger_size(shell_.font_size));
}

void ViewerFont::make_smaller() {
  set_size(smaller_size(shell_.font_size));
}

void ViewerFont::set_size(double points) {
  if (points == shell_.font_size) return;
  shell_.font_size = points;
  change();
}

}  // namespace tallowmere
