#pragma once

namespace tallowmere {

/// Registers the main window's class, with the program's icon, and returns the window's template.
int main_window_template();

}  // namespace tallowmere
