#pragma once

#include <windows.h>

#include <commctrl.h>

namespace tallowmere {

/// The text colour of a check box that has the focus.
COLORREF focus_text_color();

/// Answers NM_CUSTOMDRAW of a check box by drawing it whole, its text in focus_text_color() while
/// it has the focus: visual styles take no colour from the form. Where they are off no such message
/// comes, and the form gives the colour by WM_CTLCOLORSTATIC.
LRESULT draw_check_box(const NMCUSTOMDRAW& draw);

}  // namespace tallowmere
