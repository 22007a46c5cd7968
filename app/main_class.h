#pragma once

namespace tallowmere {

/// The template of the main window, whose class, with the program's icon, is registered first.
int main_window_template();

}  // namespace tallowmere
