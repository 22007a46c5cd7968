#include "dialogs/summary_bar.h"

#include <commctrl.h>
#include <uxtheme.h>
#include <vssym32.h>

#include "win32/dpi.h"
#include "win32/text.h"

namespace tallowmere {
namespace {

constexpr int margin = 3;  ///< between a panel's edge and its text, in pixels at 96 DPI

int text_width(HDC canvas, const std::wstring& text) {
  SIZE size;
  GetTextExtentPoint32W(canvas, text.c_str(), static_cast<int>(text.size()), &size);
  return static_cast<int>(size.cx);
}

void draw_panel(HTHEME theme, HDC canvas, RECT area) {
  if (theme != nullptr) {
    DrawThemeBackground(theme, canvas, SP_PANE, 0, &area, nullptr);
  } else {
    DrawEdge(canvas, &area, BDR_SUNKENOUTER, BF_RECT);
  }
}

}  // namespace

std::wstring shortened_folder(HDC canvas, const std::wstring& summary, int width) {
  if (text_width(canvas, summary) <= width) return summary;
  // The system keeps whole what follows the last separator: a name, and here there is none.
  const std::size_t end = summary.find_last_of(L'\\');
  if (end == std::wstring::npos) return summary;
  const std::wstring tail = summary.substr(end);
  std::wstring path = summary.substr(0, end);
  RECT room{0, 0, width - text_width(canvas, tail), 0};
  path.resize(path.size() + 4);  // room that the system may need for the ellipsis
  DrawTextW(canvas, path.data(), -1, &room,
            DT_PATH_ELLIPSIS | DT_MODIFYSTRING | DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
  return path.c_str() + tail;
}

void SummaryBar::attach(HWND bar, int path_part) {
  Control::operator=(Control(bar));
  path_part_ = path_part;
  SetWindowSubclass(bar, &SummaryBar::bar_proc, 0, reinterpret_cast<DWORD_PTR>(this));
}

SummaryBar::~SummaryBar() {
  if (handle() != nullptr) RemoveWindowSubclass(handle(), &SummaryBar::bar_proc, 0);
}

void SummaryBar::set_part(int part, std::string_view text) const {
  const std::wstring units = win32::wide(text);
  send(SB_SETTEXTW, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(units.c_str()));
  send(SB_SETTIPTEXTW, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(units.c_str()));
}

LRESULT CALLBACK SummaryBar::bar_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                      UINT_PTR, DWORD_PTR bar) {
  // Not by SBT_OWNERDRAW: the bar would not have the texts for those who ask it, nor know which
  // tips to show.
  if (message != WM_PAINT) return DefSubclassProc(window, message, wparam, lparam);
  PAINTSTRUCT area;
  reinterpret_cast<const SummaryBar*>(bar)->draw(BeginPaint(window, &area));
  EndPaint(window, &area);
  return 0;
}

void SummaryBar::draw(HDC canvas) const {
  RECT client;
  GetClientRect(handle(), &client);
  HTHEME theme = OpenThemeData(handle(), L"STATUS");
  if (theme != nullptr) {
    DrawThemeBackground(theme, canvas, 0, 0, &client, nullptr);
  } else {
    FillRect(canvas, &client, GetSysColorBrush(COLOR_BTNFACE));
  }
  const int saved = SaveDC(canvas);
  if (const LRESULT font = send(WM_GETFONT)) SelectObject(canvas, reinterpret_cast<HFONT>(font));
  SetBkMode(canvas, TRANSPARENT);
  SetTextColor(canvas, GetSysColor(COLOR_BTNTEXT));
  const int parts = static_cast<int>(send(SB_GETPARTS));
  for (int part = 0; part < parts; ++part) {
    RECT area;
    send(SB_GETRECT, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(&area));
    draw_panel(theme, canvas, area);
    InflateRect(&area, -win32::scale(margin, win32::window_dpi(handle())), 0);
    draw_text(canvas, part, area);
  }
  RestoreDC(canvas, saved);
  if (theme != nullptr) CloseThemeData(theme);
}

void SummaryBar::draw_text(HDC canvas, int part, RECT area) const {
  const auto index = static_cast<WPARAM>(part);
  std::wstring text(LOWORD(send(SB_GETTEXTLENGTHW, index)), L'\0');
  send(SB_GETTEXTW, index, reinterpret_cast<LPARAM>(text.data()));
  if (part == path_part_) {
    text = shortened_folder(canvas, text, static_cast<int>(area.right - area.left));
  }
  DrawTextW(canvas, text.c_str(), static_cast<int>(text.size()), &area,
            DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

}  // namespace tallowmere
