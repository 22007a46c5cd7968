#pragma once

#include "launch/key_events.h"

namespace tallowmere::win32 {

/// Acts as if the user pressed and released the key, which goes to the window in front. The caller
/// makes sure which one that is.
void press_key(const KeyEvent& event);

/// True while the user holds Shift, Ctrl, Alt or a Windows key.
bool modifier_is_down();

}  // namespace tallowmere::win32
