#pragma once

#include <cstddef>

namespace tallowmere {

/// What decides whether commands can be used.
struct WindowState {
  bool searching = false;
  bool finding = false;  ///< a step in the viewer takes long: it finds a hit or waits for a disk
  std::size_t rows = 0;
  bool row_selected = false;
  bool row_viewed = false;     ///< the selected row's file is the one in the viewer
  bool viewing = false;        ///< a file is in the viewer
  bool text_selected = false;  ///< there, by the user, to be searched for
  bool text_marked = false;    ///< any selection in the viewer that is not empty
  bool hyper_current = false;  ///< the criteria are those of a HyperFind
  bool user_restored = false;  ///< the user's criteria were restored after a HyperFind

  bool busy() const { return searching || finding; }
};

/// When a command can be used.
enum class EnabledRule {
  always,
  not_busy,
  busy,
  // These only while not busy.
  list_not_empty,
  row_selected,
  row_not_viewed,  ///< a row is selected whose file is not in the viewer
  viewing,
  hyper_find,
  restore_find,
  text_marked
};

/// Whether a command with this rule can be used in this state.
bool is_enabled(EnabledRule rule, const WindowState& state);

}  // namespace tallowmere
