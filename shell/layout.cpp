#include "shell/layout.h"

#include <algorithm>

namespace tallowmere {
namespace {

constexpr Twips smallest_margin = 45;   ///< beside the list and the viewer
constexpr Twips width_reserve = 360;    ///< what the window has beside the list and the viewer
constexpr Twips height_reserve = 2580;  ///< what it has above and below them
constexpr Twips gap = 45;               ///< between neighbouring edges
constexpr Twips top_margin = 90;
constexpr Twips button_height = 375;
constexpr Twips short_step = 840;
constexpr Twips long_step = 1260;
constexpr Twips hyper_step = 1680;
constexpr Twips restore_offset = 2490;  ///< of the right group's first button from the right edge
constexpr Twips line_height = 30;
constexpr Twips label_height = 240;
constexpr Twips scroll_bar_width = 255;
constexpr Twips smallest_list = 1650;
constexpr Twips smallest_viewer = 240;
constexpr Twips viewer_reserve = 1200;  ///< of the viewer, where the list takes a share

TwipRect button(Twips left, Twips step) {
  return {left, top_margin, step - gap, button_height};
}

void place_buttons(MainLayout& layout, Twips left, Twips right) {
  const auto next = [&left](Twips step) {
    const TwipRect place = button(left, step);
    left += step;
    return place;
  };
  layout.cmdSearch = next(short_step);
  layout.cmdView = next(short_step);
  layout.cmdFindNext = next(long_step);
  layout.cmdFindPrev = next(long_step);
  layout.cmdLaunch = next(short_step);
  layout.cmdHyper = next(hyper_step);
  layout.cmdRestore = button(right - restore_offset, restore_offset - short_step);
  layout.cmdExit = button(right - short_step, short_step);
}

Twips fit_list(const TwipSize& outer, Twips height) {
  const Twips room = outer.height - height_reserve - viewer_reserve;
  return std::max(std::min(height, room), smallest_list);
}

Twips list_height(const TwipSize& outer, ListShare share) {
  if (share == 0) return std::max(outer.height / 4, smallest_list);
  return fit_list(outer, (outer.height * share + whole_window / 2) / whole_window);
}

/// The viewer's height below `top`: the rule's, or less where the row of file information would
/// not fit into the window any more.
Twips viewer_height(const TwipSize& outer, const TwipSize& client, Twips list, Twips top) {
  const Twips by_rule = outer.height - list - height_reserve;
  const Twips room = client.height - top - gap - label_height - gap;
  return std::max(std::min(by_rule, room), smallest_viewer);
}

}  // namespace

MainLayout layout_main_window(const TwipSize& outer, const TwipSize& client, ListShare share) {
  MainLayout layout;
  const Twips width = std::max<Twips>(outer.width - width_reserve, 0);
  // Window borders differ between systems: what they leave is shared between both sides.
  const Twips margin = std::max((client.width - width) / 2, smallest_margin);
  place_buttons(layout, margin, margin + width);

  Twips top = top_margin + button_height + gap;
  const auto row = [&](Twips height, Twips gap_below) {
    const TwipRect place{margin, top, width, height};
    top += height + gap_below;
    return place;
  };
  layout.Line1 = row(line_height, gap);
  layout.ListView2 = row(list_height(outer, share), gap);
  layout.Label1 = row(label_height, 0);
  layout.Label2 = row(label_height, gap);
  layout.Line2 = row(line_height, gap);
  layout.Text1 = row(viewer_height(outer, client, layout.ListView2.height, top), gap);
  layout.lblFileInfo = row(label_height, 0);

  layout.Text1.width = std::max<Twips>(width - scroll_bar_width, 0);
  layout.VScroll1 = layout.Text1;
  layout.VScroll1.left = layout.Text1.right();
  layout.VScroll1.width = scroll_bar_width;
  return layout;
}

ListShare list_share(const TwipSize& outer, Twips height) {
  if (outer.height <= 0) return 0;
  const Twips share = (fit_list(outer, height) * whole_window + outer.height / 2) / outer.height;
  return static_cast<ListShare>(std::clamp<Twips>(share, 1, whole_window));
}

bool LayoutMemory::changed(const TwipRect& placement) {
  if (last_ == placement) return false;
  last_ = placement;
  return true;
}

}  // namespace tallowmere
