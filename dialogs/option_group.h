#pragma once

#include <array>
#include <cstddef>

#include "win32/controls.h"

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

}  // namespace tallowmere
