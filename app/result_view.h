#pragma once

#include <windows.h>

#include <commctrl.h>

#include <array>

#include "results/result_list.h"
#include "results/result_sort.h"
#include "results/row_text.h"
#include "shell/settings.h"
#include "win32/list_view.h"

namespace tallowmere {

/// `ListView2` as a view of the result list: it holds no rows, it asks for them.
class ResultView : public win32::ListView {
 public:
  /// `window` is an owner-data report view; its form hands on the notifications below.
  ResultView(HWND window, const ResultList& results, DateFormat format);
  ~ResultView();
  ResultView(const ResultView&) = delete;
  ResultView& operator=(const ResultView&) = delete;

  /// Shows the records as they are now, none selected, from the top.
  void show_all() const;
  /// Shows the rows found so far and leaves the visible part where it is.
  void show_more() const;
  void show_none() const { set_row_count(0, false); }

  /// Shows the sort order by an arrow in a header; the type has no column.
  void show_order(SortKey key, bool descending) const;

  /// Gives the columns these widths; the last one by design when the view is resized next.
  void set_column_widths(const ColumnWidths& users, int dpi);
  /// The widths that the user has given to columns until now. `dpi` is the one of the last call.
  const ColumnWidths& column_widths(int dpi);
  /// Gives the last column what the others leave, when the view is resized.
  void fit_last_column(int dpi);

  /// Selects the name up to its extension, which mostly stays, when its edit begins.
  void select_stem(int row) const;

  void LVN_GetDispInfo(NMLVDISPINFOW& request) const;
  /// The row that typing ahead leads to; -1 when there is none.
  int LVN_ODFindItem(const NMLVFINDITEMW& request) const;

 private:
  static LRESULT CALLBACK subclass_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                        UINT_PTR id, DWORD_PTR);

  void set_width(int column, int pixels);

  const ResultList& results_;
  DateFormat format_;
  ColumnWidths users_{};
  std::array<int, result_columns> set_{};  ///< by the program, in pixels: others are the user's
};

/// The first record whose name is what the request means; -1 when there is none.
int find_by_name(const ResultList& results, const win32::FindRequest& request);

}  // namespace tallowmere
