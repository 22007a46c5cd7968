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

/// The part of the window's height that the user has given to the list, in ten thousandths; 0 when
/// that is left to the design.
using ListShare = int;
inline constexpr ListShare whole_window = 10000;

/// The list takes its share, by design a quarter, of the window's height, the viewer what is left.
/// `outer` is the size of the whole window, `client` that of its inside.
MainLayout layout_main_window(const TwipSize& outer, const TwipSize& client, ListShare share);

/// The share of a list of this height, or of the nearest one that the window has room for.
ListShare list_share(const TwipSize& outer, Twips height);

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
