#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "win32/controls.h"

namespace tallowmere::win32 {

/// A report view that owns no rows (LVS_OWNERDATA): it asks for their texts by LVN_GETDISPINFO.
class ListView : public Control {
 public:
  using Control::Control;

  void add_column(int index, std::string_view caption, bool right_aligned) const;
  void set_column_width(int index, int pixels) const;
  int column_width(int index) const;
  /// Shows the sort order by an arrow in the header of one column; of none when `column` is -1.
  void set_sort_arrow(int column, bool ascending) const;
  HWND header() const { return ListView_GetHeader(handle()); }

  /// Shows `count` rows; `keep_scroll` leaves the visible part where it is.
  void set_row_count(int count, bool keep_scroll) const;
  int row_count() const { return ListView_GetItemCount(handle()); }

  /// Returns the focused row when it is selected, else the first selected one; -1 for none.
  int selected() const;
  /// Returns the focused row when it is selected; -1 otherwise.
  int focused_selected() const {
    return ListView_GetNextItem(handle(), -1, LVNI_FOCUSED | LVNI_SELECTED);
  }
  /// Returns the row with the focus mark, selected or not; -1 for none.
  int focused() const { return ListView_GetNextItem(handle(), -1, LVNI_FOCUSED); }
  /// Returns the row at a place of the view; -1 without one.
  int row_at(POINT at) const;
  RECT row_area(int row) const;
  int selected_count() const { return static_cast<int>(ListView_GetSelectedCount(handle())); }
  /// Returns the selected rows in ascending order.
  std::vector<std::size_t> selected_rows() const;
  /// Lets the user change the focused row's first column in place (LVS_EDITLABELS).
  void edit_label() const;
  /// Selects only the first `units` of the text instead of all of it; for LVN_BEGINLABELEDIT.
  void select_in_label(std::size_t units) const;
  bool editing_label() const { return ListView_GetEditControl(handle()) != nullptr; }
  /// Selects and focuses only this row and scrolls it into view; -1 selects none.
  void select_only(int row) const;

  /// Gives this row the focus mark and leaves the selection alone.
  void mark(int row) const {
    ListView_SetItemState(handle(), row, LVIS_FOCUSED, LVIS_FOCUSED);
    ListView_SetSelectionMark(handle(), row);
  }
  void select_all() const { ListView_SetItemState(handle(), -1, LVIS_SELECTED, LVIS_SELECTED); }

  /// Adds styles LVS_EX_*.
  void add_styles(DWORD styles) const;
};

/// A text that LVN_ODFINDITEM looks for in the first column, ignoring case.
struct FindRequest {
  std::string text;
  bool whole;  ///< the text must be the whole cell, not only its beginning
  int start;   ///< the first row to look at
  bool wrap;   ///< goes on from the last row to the first
};
/// Reads such a request; nothing when the view looks for something other than a text.
std::optional<FindRequest> read_find_request(const NMLVFINDITEMW& request);

/// Answers LVN_GETDISPINFO with the text of a cell, given in UTF-8; cut at the view's buffer.
void answer_text(NMLVDISPINFOW& request, std::string_view text);

}  // namespace tallowmere::win32
