#include "dialogs/recent_drop_down.h"

#include <commctrl.h>
#include <uxtheme.h>
#include <vssym32.h>

#include <algorithm>
#include <utility>

#include "dialogs/resource.h"
#include "dialogs/summary_bar.h"
#include "win32/dpi.h"
#include "win32/text.h"

namespace tallowmere {
namespace {

constexpr char forget_text[] = "Forget all";
constexpr int margin = 7;  ///< between the list and the form's edges, in dialog units

/// The font of a list box, to measure with.
class Canvas {
 public:
  explicit Canvas(HWND window)
      : window_(window),
        canvas_(GetDC(window)),
        old_font_(SelectObject(canvas_,
                               reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)))) {}
  ~Canvas() {
    SelectObject(canvas_, old_font_);
    ReleaseDC(window_, canvas_);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  int width(const std::wstring& text) const {
    SIZE size{};
    GetTextExtentPoint32W(canvas_, text.c_str(), static_cast<int>(text.size()), &size);
    return static_cast<int>(size.cx);
  }
  /// As much of the start as has room, with an ellipsis.
  std::wstring start(std::wstring text, int room) const {
    RECT area{0, 0, room, 0};
    text.resize(text.size() + 4);  // that the system may need for the ellipsis
    DrawTextW(canvas_, text.data(), -1, &area,
              DT_END_ELLIPSIS | DT_MODIFYSTRING | DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    return text.c_str();
  }
  std::wstring folder(const std::wstring& text, int room) const {
    return shortened_folder(canvas_, text, room);
  }

 private:
  HWND window_;
  HDC canvas_;
  HGDIOBJ old_font_;
};

/// The line in `room` pixels: long words lose their end, then the folder its middle.
std::string fitted(RecentLine line, const Canvas& canvas, int room) {
  const auto over = [&] { return canvas.width(win32::wide(line.text())) - room; };
  const auto shorten = [&](std::string& part, auto how, int least) {
    const std::wstring units = win32::wide(part);
    const int width = canvas.width(units);
    const int given = std::max(width - over(), std::min(width, least));
    if (given < width) part = win32::narrow((canvas.*how)(units, given));
  };
  shorten(line.words, &Canvas::start, room * 3 / 10);
  shorten(line.where, &Canvas::folder, room / 5);
  return win32::narrow(canvas.start(win32::wide(line.text()), room));
}

int arrow_state(UINT item_state) {
  if ((item_state & CDIS_DISABLED) != 0) return CBXS_DISABLED;
  if ((item_state & CDIS_SELECTED) != 0) return CBXS_PRESSED;
  return (item_state & CDIS_HOT) != 0 ? CBXS_HOT : CBXS_NORMAL;
}

}  // namespace

RecentDropDown::RecentDropDown(win32::Form& form, int text_box, RecentSearches& searches,
                               ShortDate short_date, Chosen chosen)
    : cmdRecent(form.item(IDC_SEARCH_RECENT)),
      lstRecent(form.item(IDC_SEARCH_RECENT_LIST)),
      form_(form),
      text_box_(form.item(text_box)),
      searches_(searches),
      short_date_(std::move(short_date)),
      chosen_(std::move(chosen)),
      tips_(form.handle()) {
  tips_.set(cmdRecent.handle(), "Recent Searches (F4)");
  // What the list lies over must not paint over it.
  for (HWND control = GetWindow(form.handle(), GW_CHILD); control != nullptr;
       control = GetWindow(control, GW_HWNDNEXT)) {
    SetWindowLongPtrW(control, GWL_STYLE, GetWindowLongPtrW(control, GWL_STYLE) | WS_CLIPSIBLINGS);
  }
  form.clicked(IDC_SEARCH_RECENT, [this] { open(); });
  form.notify(IDC_SEARCH_RECENT, static_cast<UINT>(NM_CUSTOMDRAW), [this](NMHDR& header) {
    return draw_button(reinterpret_cast<const NMCUSTOMDRAW&>(header));
  });
  form.command(IDC_SEARCH_RECENT_LIST, LBN_KILLFOCUS, [this] { lstRecent.show(false); });
  // The system gives the focus back to where it was when the user went to another program.
  form.command(IDC_SEARCH_RECENT_LIST, LBN_SETFOCUS, [this] {
    if (!is_open()) text_box_.focus();
  });
}

void RecentDropDown::refresh_button() const {
  if (searches_.entries().empty() && cmdRecent.has_focus()) text_box_.focus();
  cmdRecent.enable(!searches_.entries().empty());
}

void RecentDropDown::fit() const {
  close();
  tips_.fit();
}

// Opening and closing.

void RecentDropDown::open() {
  if (searches_.entries().empty()) return;
  place();
  fill(0);
  GetCursorPos(&pointer_);
  lstRecent.show(true);
  form_.move_focus(lstRecent.handle());
}

void RecentDropDown::close() const {
  if (!is_open()) return;
  if (lstRecent.has_focus()) text_box_.focus();
  lstRecent.show(false);
}

/// Places the list below the text box: out to the form's right margin, as high as its rows or as
/// the form allows.
void RecentDropDown::place() const {
  RECT form;
  GetClientRect(form_.handle(), &form);
  RECT edge{0, 0, margin, margin / 2};
  MapDialogRect(form_.handle(), &edge);
  RECT box;
  GetWindowRect(text_box_.handle(), &box);
  MapWindowPoints(nullptr, form_.handle(), reinterpret_cast<POINT*>(&box), 2);
  RECT outside;
  RECT inside;
  GetWindowRect(lstRecent.handle(), &outside);
  GetClientRect(lstRecent.handle(), &inside);
  const int frame = static_cast<int>(outside.bottom - outside.top - inside.bottom);
  const int row = static_cast<int>(SendMessageW(lstRecent.handle(), LB_GETITEMHEIGHT, 0, 0));
  const int rows = static_cast<int>(searches_.entries().size()) + 1;
  const int room = static_cast<int>(form.bottom - edge.bottom - box.bottom) - frame;
  const int height = std::max(std::min(rows, room / std::max(row, 1)), 1) * row + frame;
  SetWindowPos(lstRecent.handle(), nullptr, box.left, box.bottom,
               form.right - edge.right - box.left, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void RecentDropDown::fill(int selected) {
  const Canvas canvas(lstRecent.handle());
  RECT place;
  GetWindowRect(lstRecent.handle(), &place);
  const int dpi = win32::window_dpi(form_.handle());
  const int room = static_cast<int>(place.right - place.left) - win32::metrics(SM_CXVSCROLL, dpi) -
                   win32::scale(8, dpi);
  lstRecent.set_redraw(false);
  lstRecent.clear();
  for (const SearchCriteria& search : searches_.entries()) {
    lstRecent.add(fitted(recent_line(search, short_date_), canvas, room));
  }
  lstRecent.add(forget_text);
  lstRecent.set_redraw(true);
  point_at(selected);
}

// The open list.

bool RecentDropDown::pre_translate(MSG& message) {
  if (is_open()) return pre_translate_open(message);
  const bool with_alt = message.message == WM_SYSKEYDOWN && message.wParam == VK_DOWN;
  if (!with_alt && (message.message != WM_KEYDOWN || message.wParam != VK_F4)) return false;
  if (message.hwnd != text_box_.handle() && message.hwnd != cmdRecent.handle()) return false;
  DispatchMessageW(&message);  // Alt by itself would open a menu when it goes up
  open();
  return true;
}

bool RecentDropDown::pre_translate_open(MSG& message) {
  const bool in_list = message.hwnd == lstRecent.handle();
  switch (message.message) {
    case WM_KEYDOWN:
      return in_list && key_down(message.wParam);
    case WM_SYSKEYDOWN:
      if (message.wParam != VK_UP && message.wParam != VK_DOWN) return false;
      DispatchMessageW(&message);
      close();
      return true;
    case WM_MOUSEMOVE:
      if (in_list) mouse_moved(message);
      return false;
    case WM_LBUTTONUP:
      if (!in_list) return false;
      DispatchMessageW(&message);
      choose(row_at(message.lParam));
      return true;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_NCLBUTTONDOWN:
    case WM_NCRBUTTONDOWN:
      if (in_list) return false;
      close();
      return message.hwnd == cmdRecent.handle();  // which would open it again
  }
  return false;
}

bool RecentDropDown::key_down(WPARAM key) {
  switch (key) {
    case VK_RETURN:
      choose(lstRecent.selected());
      return true;
    case VK_DELETE:
      remove(lstRecent.selected());
      return true;
    case VK_ESCAPE:
    case VK_F4:
      close();
      return true;
    case VK_TAB:
      close();
      return false;  // and on from the text box
    default:
      return false;
  }
}

/// Selects the row below the mouse once the mouse has moved: it may just have been where the list
/// opened.
void RecentDropDown::mouse_moved(const MSG& message) {
  if (message.pt.x == pointer_.x && message.pt.y == pointer_.y) return;
  pointer_ = message.pt;
  const int row = row_at(message.lParam);
  if (row >= 0 && row != lstRecent.selected()) point_at(row);
}

/// Selects a row; the tip shows its line when the list does not show all of it.
void RecentDropDown::point_at(int row) {
  lstRecent.select(row);
  std::string tip;
  if (std::cmp_less(row, searches_.entries().size())) {
    const auto index = static_cast<std::size_t>(row);
    tip = recent_line(searches_.entries()[index], short_date_).text();
  }
  tips_.set(lstRecent.handle(), tip == lstRecent.row_text(row) ? std::string() : tip);
}

/// The row at a position; -1 outside the rows.
int RecentDropDown::row_at(LPARAM position) const {
  const LRESULT row = SendMessageW(lstRecent.handle(), LB_ITEMFROMPOINT, 0, position);
  return HIWORD(row) != 0 ? -1 : LOWORD(row);
}

void RecentDropDown::choose(int row) {
  if (row < 0) return;
  close();
  if (std::cmp_less(row, searches_.entries().size())) {
    const SearchCriteria chosen = searches_.entries()[static_cast<std::size_t>(row)];
    chosen_(chosen);
  } else {
    searches_.forget_all();
  }
  refresh_button();
}

void RecentDropDown::remove(int row) {
  if (!std::cmp_less(row, searches_.entries().size()) || row < 0) return;
  searches_.remove(static_cast<std::size_t>(row));
  if (searches_.entries().empty()) {
    close();
    refresh_button();
    return;
  }
  place();
  fill(std::min(row, static_cast<int>(searches_.entries().size()) - 1));
}

/// Draws the button as the arrow of a combo box. Its own text is for assistive tools.
LRESULT RecentDropDown::draw_button(const NMCUSTOMDRAW& draw) const {
  if (draw.dwDrawStage != CDDS_PREPAINT) return CDRF_DODEFAULT;
  RECT area;
  GetClientRect(cmdRecent.handle(), &area);
  const int state = arrow_state(draw.uItemState);
  HTHEME theme = OpenThemeData(cmdRecent.handle(), L"COMBOBOX");
  if (theme != nullptr) {
    DrawThemeParentBackground(cmdRecent.handle(), draw.hdc, &area);
    DrawThemeBackground(theme, draw.hdc, CP_DROPDOWNBUTTON, state, &area, nullptr);
    CloseThemeData(theme);
  } else {
    const UINT look = state == CBXS_DISABLED  ? DFCS_INACTIVE
                      : state == CBXS_PRESSED ? DFCS_PUSHED
                                              : 0u;
    DrawFrameControl(draw.hdc, &area, DFC_SCROLL, DFCS_SCROLLCOMBOBOX | look);
  }
  const LRESULT cues = SendMessageW(cmdRecent.handle(), WM_QUERYUISTATE, 0, 0);
  if (cmdRecent.has_focus() && (cues & UISF_HIDEFOCUS) == 0) {
    const int inset = win32::scale(2, win32::window_dpi(cmdRecent.handle()));
    InflateRect(&area, -inset, -inset);
    DrawFocusRect(draw.hdc, &area);
  }
  return CDRF_SKIPDEFAULT;
}

}  // namespace tallowmere
