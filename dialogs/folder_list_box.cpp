#include "dialogs/folder_list_box.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "dialogs/folder_icon.h"
#include "win32/dpi.h"
#include "win32/text.h"

namespace tallowmere {
namespace {

constexpr int icon_size = 16;  ///< lengths in pixels at 96 DPI
constexpr int indent = 10;
constexpr int gap = 4;

void draw_text(HDC canvas, const std::string& text, RECT area, bool selected) {
  SetBkMode(canvas, TRANSPARENT);
  SetTextColor(canvas, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
  const std::wstring units = win32::wide(text);
  DrawTextW(canvas, units.c_str(), static_cast<int>(units.size()), &area,
            DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

}  // namespace

void FolderListBox::attach(HWND list) {
  ListBox::operator=(ListBox(list));
  SetWindowSubclass(list, &FolderListBox::list_proc, 0, reinterpret_cast<DWORD_PTR>(this));
  fit_rows();
}

FolderListBox::~FolderListBox() {
  if (handle() != nullptr) RemoveWindowSubclass(handle(), &FolderListBox::list_proc, 0);
}

LRESULT CALLBACK FolderListBox::list_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                          UINT_PTR, DWORD_PTR box) {
  if (message == WM_SETFONT) {
    // On a screen of another DPI the form gives its controls another font.
    const LRESULT result = DefSubclassProc(window, message, wparam, lparam);
    reinterpret_cast<const FolderListBox*>(box)->fit_rows();
    return result;
  }
  // Enter belongs to the list and not to the form's default button.
  if (message == WM_GETDLGCODE && wparam == VK_RETURN) {
    return DefSubclassProc(window, message, wparam, lparam) | DLGC_WANTALLKEYS;
  }
  if (message == WM_KEYDOWN && wparam == VK_RETURN) {
    SendMessageW(GetParent(window), WM_COMMAND,
                 static_cast<WPARAM>(MAKELONG(GetDlgCtrlID(window), LBN_DBLCLK)),
                 reinterpret_cast<LPARAM>(window));
    return 0;
  }
  return DefSubclassProc(window, message, wparam, lparam);
}

std::string FolderListBox::path() const {
  std::string path = tree_.path();
  // The root keeps its separator: the drive alone would be its current folder.
  if (tree_.open_row() > 0) path.pop_back();
  return path;
}

std::string FolderListBox::selected_path() const {
  const int row = selected();
  if (row < 0 || waiting_) return {};
  return tree_.rows()[static_cast<std::size_t>(row)].path;
}

void FolderListBox::show(FolderTree tree) {
  tree_ = std::move(tree);
  show_rows();
}

void FolderListBox::show_waiting() {
  waiting_ = true;
  clear();
  add("Waiting for the folder...");
}

void FolderListBox::show_rows() {
  waiting_ = false;
  set_redraw(false);
  clear();
  for (const FolderRow& row : tree_.rows()) add(row.name);
  select(tree_.open_row());
  // With the folder's parent above it, as many subfolders as fit below.
  set_top(std::max(0, tree_.open_row() - 1));
  set_redraw(true);
}

void FolderListBox::fit_rows() const {
  HDC canvas = GetDC(handle());
  HGDIOBJ old_font = SelectObject(canvas, reinterpret_cast<HFONT>(send(WM_GETFONT)));
  TEXTMETRICW metrics{};
  GetTextMetricsW(canvas, &metrics);
  SelectObject(canvas, old_font);
  ReleaseDC(handle(), canvas);
  const int dpi = win32::window_dpi(handle());
  const int text_height = static_cast<int>(metrics.tmHeight);
  set_row_height(std::max(text_height, win32::scale(icon_size, dpi)) + win32::scale(2, dpi));
}

void FolderListBox::draw(const DRAWITEMSTRUCT& item) const {
  const bool selected = (item.itemState & ODS_SELECTED) != 0;
  FillRect(item.hDC, &item.rcItem, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
  if (waiting_) {
    RECT area = item.rcItem;
    area.left += win32::scale(gap, win32::window_dpi(handle()));
    draw_text(item.hDC, row_text(0), area, selected);
  } else if (item.itemID < tree_.rows().size()) {
    const FolderRow& row = tree_.rows()[item.itemID];
    const int dpi = win32::window_dpi(handle());
    const int size = win32::scale(icon_size, dpi);
    RECT area = item.rcItem;
    area.left += win32::scale(gap / 2 + row.depth * indent, dpi);
    const int top = static_cast<int>(area.top + area.bottom - size) / 2;
    draw_folder_icon(item.hDC, {area.left, top, area.left + size, top + size},
                     row.kind != FolderKind::child);
    area.left += size + win32::scale(gap, dpi);
    draw_text(item.hDC, row.name, area, selected);
  }
  if ((item.itemState & ODS_FOCUS) != 0 && (item.itemState & ODS_NOFOCUSRECT) == 0) {
    DrawFocusRect(item.hDC, &item.rcItem);
  }
}

}  // namespace tallowmere
