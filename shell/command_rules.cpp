#include "shell/command_rules.h"

namespace tallowmere {

bool is_enabled(EnabledRule rule, const WindowState& state) {
  using enum EnabledRule;
  if (rule == always) return true;
  if (state.busy()) return rule == EnabledRule::busy;
  switch (rule) {
    case not_busy:
      return true;
    case list_not_empty:
      return state.rows > 0;
    case EnabledRule::row_selected:
      return state.row_selected;
    case row_not_viewed:
      return state.row_selected && !state.row_viewed;
    case EnabledRule::viewing:
      return state.viewing;
    case hyper_find:
      return state.viewing && (state.text_selected || state.user_restored);
    case restore_find:
      return state.viewing && state.hyper_current;
    case EnabledRule::text_marked:
      return state.text_marked;
    default:
      return false;
  }
}

}  // namespace tallowmere
