#include "dialogs/focus_check_box.h"

#include <uxtheme.h>
#include <vssym32.h>

#include "win32/controls.h"
#include "win32/dpi.h"
#include "win32/text.h"

namespace tallowmere {
namespace {

int theme_state(const NMCUSTOMDRAW& draw, win32::Check check) {
  const int first = check == win32::Check::on       ? CBS_CHECKEDNORMAL
                    : check == win32::Check::grayed ? CBS_MIXEDNORMAL
                                                    : CBS_UNCHECKEDNORMAL;
  if ((draw.uItemState & CDIS_DISABLED) != 0) return first + CBS_UNCHECKEDDISABLED - 1;
  if ((draw.uItemState & CDIS_SELECTED) != 0) return first + CBS_UNCHECKEDPRESSED - 1;
  if ((draw.uItemState & CDIS_HOT) != 0) return first + CBS_UNCHECKEDHOT - 1;
  return first;
}

void draw_text(const win32::CheckBox& box, HDC canvas, RECT area) {
  const bool focused = box.has_focus();
  SetBkMode(canvas, TRANSPARENT);
  SetTextColor(canvas, focused         ? focus_text_color()
                       : box.enabled() ? GetSysColor(COLOR_BTNTEXT)
                                       : GetSysColor(COLOR_GRAYTEXT));
  HGDIOBJ old_font =
      SelectObject(canvas, reinterpret_cast<HFONT>(SendMessageW(box.handle(), WM_GETFONT, 0, 0)));
  const std::wstring text = win32::wide(box.text());
  const LRESULT cues = SendMessageW(box.handle(), WM_QUERYUISTATE, 0, 0);
  const UINT prefix = (cues & UISF_HIDEACCEL) != 0 ? DT_HIDEPREFIX : 0;
  RECT needed = area;
  DrawTextW(canvas, text.c_str(), static_cast<int>(text.size()), &needed,
            DT_SINGLELINE | DT_CALCRECT);
  DrawTextW(canvas, text.c_str(), static_cast<int>(text.size()), &area,
            DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | prefix);
  SelectObject(canvas, old_font);
  if (!focused || (cues & UISF_HIDEFOCUS) != 0) return;
  // A box without a caption shows its focus, too.
  if (text.empty()) needed.right += area.bottom - area.top;
  InflateRect(&needed, 1, 0);
  area.left = needed.left;
  if (needed.right < area.right) area.right = needed.right;
  DrawFocusRect(canvas, &area);
}

}  // namespace

COLORREF focus_text_color() {
  return GetSysColor(COLOR_HIGHLIGHT);
}

LRESULT draw_check_box(const NMCUSTOMDRAW& draw) {
  if (draw.dwDrawStage != CDDS_PREPAINT) return CDRF_DODEFAULT;
  const win32::CheckBox box(draw.hdr.hwndFrom);
  HTHEME theme = OpenThemeData(box.handle(), L"BUTTON");
  if (theme == nullptr) return CDRF_DODEFAULT;
  const int state = theme_state(draw, box.state());
  SIZE size{};
  GetThemePartSize(theme, draw.hdc, BP_CHECKBOX, state, nullptr, TS_DRAW, &size);
  RECT area;
  GetClientRect(box.handle(), &area);
  RECT glyph = area;
  glyph.top += (area.bottom - area.top - size.cy) / 2;
  glyph.right = glyph.left + size.cx;
  glyph.bottom = glyph.top + size.cy;
  DrawThemeParentBackground(box.handle(), draw.hdc, &area);
  DrawThemeBackground(theme, draw.hdc, BP_CHECKBOX, state, &glyph, nullptr);
  CloseThemeData(theme);
  area.left = glyph.right + win32::scale(4, win32::window_dpi(box.handle()));
  draw_text(box, draw.hdc, area);
  return CDRF_SKIPDEFAULT;
}

}  // namespace tallowmere
