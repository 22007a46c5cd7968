#pragma once

#include <array>
#include <cstddef>

#include "win32/controls.h"
#include "win32/form.h"

namespace tallowmere {

/// Selects one button of a group and clears the others; none when `index` is out of range.
template <std::size_t count>
void select_option(const std::array<win32::OptionButton, count>& options, int index) {
  for (std::size_t i = 0; i < count; ++i) {
    options[i].set_selected(static_cast<int>(i) == index);
  }
}

/// The first selected button, in index order; `otherwise` when there is none.
template <std::size_t count>
int selected_option(const std::array<win32::OptionButton, count>& options, int otherwise) {
  for (std::size_t i = 0; i < count; ++i) {
    if (options[i].selected()) return static_cast<int>(i);
  }
  return otherwise;
}

/// Hides a form that has option buttons. Shown again, it gives the focus back to the control that
/// had it last, and an option button takes that for a click; so a push button takes it first.
inline void hide_options(win32::Form& form, const win32::Button& button) {
  button.focus();
  form.hide();
}

}  // namespace tallowmere
