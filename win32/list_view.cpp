#include "win32/list_view.h"

#include <algorithm>
#include <string>

#include "win32/text.h"

namespace tallowmere::win32 {

namespace {

/// Up to this many selected rows are deselected one by one: a call for all rows visits each row.
constexpr int few_rows = 64;

constexpr UINT substring_flag = 0x0004;  ///< LVFI_SUBSTRING, which the compiler's headers lack

}  // namespace

void ListView::add_column(int index, std::string_view caption, bool right_aligned) const {
  std::wstring text = wide(caption);
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_FMT | LVCF_SUBITEM;
  column.fmt = right_aligned ? LVCFMT_RIGHT : LVCFMT_LEFT;
  column.pszText = text.data();
  column.iSubItem = index;
  send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

void ListView::set_column_width(int index, int pixels) const {
  if (column_width(index) != pixels) ListView_SetColumnWidth(handle(), index, pixels);
}

int ListView::column_width(int index) const {
  return ListView_GetColumnWidth(handle(), index);
}

void ListView::set_sort_arrow(int column, bool ascending) const {
  const int count = Header_GetItemCount(header());
  for (int i = 0; i < count; ++i) {
    HDITEMW entry{};
    entry.mask = HDI_FORMAT;
    SendMessageW(header(), HDM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&entry));
    const int arrow = i != column ? 0 : ascending ? HDF_SORTUP : HDF_SORTDOWN;
    const int format = (entry.fmt & ~(HDF_SORTUP | HDF_SORTDOWN)) | arrow;
    if (format == entry.fmt) continue;
    entry.fmt = format;
    SendMessageW(header(), HDM_SETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&entry));
  }
}

void ListView::set_row_count(int count, bool keep_scroll) const {
  send(LVM_SETITEMCOUNT, static_cast<WPARAM>(count), keep_scroll ? LVSICF_NOSCROLL : 0);
}

int ListView::selected() const {
  const int row = focused_selected();
  return row >= 0 ? row : ListView_GetNextItem(handle(), -1, LVNI_SELECTED);
}

int ListView::row_at(POINT at) const {
  LVHITTESTINFO test{};
  test.pt = at;
  return static_cast<int>(send(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&test)));
}

RECT ListView::row_area(int row) const {
  RECT area{};
  ListView_GetItemRect(handle(), row, &area, LVIR_BOUNDS);
  return area;
}

std::vector<std::size_t> ListView::selected_rows() const {
  std::vector<std::size_t> rows;
  int row = -1;
  while ((row = ListView_GetNextItem(handle(), row, LVNI_SELECTED)) >= 0) {
    rows.push_back(static_cast<std::size_t>(row));
  }
  return rows;
}

void ListView::edit_label() const {
  const int row = focused_selected();
  if (row >= 0) send(LVM_EDITLABELW, static_cast<WPARAM>(row));
}

/// The message is posted, since the view selects the whole text after the notification.
void ListView::select_in_label(std::size_t units) const {
  PostMessageW(ListView_GetEditControl(handle()), EM_SETSEL, 0, static_cast<LPARAM>(units));
}

void ListView::select_only(int row) const {
  if (selected_count() > few_rows) {
    ListView_SetItemState(handle(), -1, 0, LVIS_SELECTED);
  } else {
    int other = -1;
    while ((other = ListView_GetNextItem(handle(), other, LVNI_SELECTED)) >= 0) {
      if (other != row) ListView_SetItemState(handle(), other, 0, LVIS_SELECTED);
    }
  }
  if (row < 0 || row >= row_count()) return;
  ListView_SetItemState(handle(), row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  ListView_SetSelectionMark(handle(), row);
  ListView_EnsureVisible(handle(), row, FALSE);
}

void ListView::add_styles(DWORD styles) const {
  ListView_SetExtendedListViewStyleEx(handle(), styles, styles);
}

std::optional<FindRequest> read_find_request(const NMLVFINDITEMW& request) {
  // Typed keys come with LVFI_SUBSTRING on some systems and with LVFI_PARTIAL on others: both are
  // documented to mean the beginning.
  constexpr UINT beginning = LVFI_PARTIAL | substring_flag;
  const LVFINDINFOW& wanted = request.lvfi;
  if ((wanted.flags & (LVFI_STRING | beginning)) == 0 || wanted.psz == nullptr) return std::nullopt;
  return FindRequest{narrow(wanted.psz), (wanted.flags & beginning) == 0, request.iStart,
                     (wanted.flags & LVFI_WRAP) != 0};
}

void answer_text(NMLVDISPINFOW& request, std::string_view text) {
  LVITEMW& item = request.item;
  if ((item.mask & LVIF_TEXT) == 0 || item.pszText == nullptr || item.cchTextMax <= 0) return;
  const std::wstring units = wide(text);
  std::size_t count = std::min(units.size(), static_cast<std::size_t>(item.cchTextMax) - 1);
  if (count < units.size() && count > 0 && IS_HIGH_SURROGATE(units[count - 1])) --count;
  std::copy_n(units.data(), count, item.pszText);
  item.pszText[count] = L'\0';
}

}  // namespace tallowmere::win32
