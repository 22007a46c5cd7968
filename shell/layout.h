#pragma once

#include <optional>

#include "shell/geometry.h"

namespace tallowmere {

inline constexpr TwipSize main_window_design{10200, 7800};
inline constexpr TwipSize main_window_minimum{9600, 6000};

/// Places of the main window's controls, in twips from the corner of its client area.
struct MainLayout {
  TwipRect cmdSearch, cmdView, cmdFindNext, cmdFindPrev, cmdLaunch, cmdHyper, cmdRestore, cmdExit;
  TwipRect Line1, ListView2, Label1, Label2, Line2, Text1, VScroll1, lblFileInfo;
};

/// The list takes a quarter of the window's height, the viewer what is left. `outer` is the size of
/// the whole window, `client` that of its inside.
MainLayout layout_main_window(const TwipSize& outer, const TwipSize& client);

/// The placement at the last layout, so that a resize event without a change does nothing.
class LayoutMemory {
 public:
  /// True when `placement` differs from that of the last call; true the first time.
  bool changed(const TwipRect& placement);
  /// Makes the next call of changed() say true, as after a change of DPI.
  void forget() { last_.reset(); }

 private:
  std::optional<TwipRect> last_;
};

}  // namespace tallowmere
