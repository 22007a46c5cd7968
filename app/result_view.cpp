#include "app/result_view.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "engine/letter_case.h"
#include "files/file_names.h"
#include "win32/dpi.h"
#include "win32/text.h"

namespace tallowmere {

namespace {

struct Column {
  const char* caption;
  int width;  ///< in pixels at 96 dots per inch; of the last column the least
  bool right_aligned;
};

constexpr Column columns[result_columns] = {
    {"Name", 180, false}, {"Date", 125, false}, {"Size", 85, true}, {"Folder", 160, false}};

constexpr int last_column = result_columns - 1;
constexpr UINT_PTR subclass_id = 1;

/// Hides that Shift is down from what this thread does while it lives.
class WithoutShift {
 public:
  WithoutShift() {
    GetKeyboardState(before_);
    BYTE keys[key_count];
    std::copy(std::begin(before_), std::end(before_), keys);
    keys[VK_SHIFT] = keys[VK_LSHIFT] = keys[VK_RSHIFT] = 0;
    SetKeyboardState(keys);
  }
  ~WithoutShift() { SetKeyboardState(before_); }
  WithoutShift(const WithoutShift&) = delete;
  WithoutShift& operator=(const WithoutShift&) = delete;

 private:
  static constexpr int key_count = 256;
  BYTE before_[key_count] = {};
};

}  // namespace

int find_by_name(const ResultList& results, const win32::FindRequest& request) {
  const int count = static_cast<int>(results.file_count());
  const std::string wanted = lower_case(request.text);
  const int start = std::clamp(request.start, 0, count);
  const int steps = request.wrap ? count : count - start;
  for (int step = 0; step < steps; ++step) {
    const int row = (start + step) % count;
    const std::string name = lower_case(results.record(static_cast<std::size_t>(row)).filename);
    if (request.whole ? name == wanted : name.starts_with(wanted)) return row;
  }
  return -1;
}

ResultView::ResultView(HWND window, const ResultList& results, DateFormat format)
    : ListView(window), results_(results), format_(std::move(format)) {
  // A header alone flickers less, a double-buffered view not at all.
  // It has no tips of its own: RowTips show what a cell has no room for, and more.
  add_styles(LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  for (int i = 0; i < result_columns; ++i) {
    add_column(i, columns[i].caption, columns[i].right_aligned);
    set_[i] = column_width(i);
  }
  SetWindowSubclass(window, subclass_proc, subclass_id, 0);
}

ResultView::~ResultView() {
  RemoveWindowSubclass(handle(), subclass_proc, subclass_id);
}

// A name typed with Shift, for "_" or a capital, must not select all rows on the way to it, which
// Delete would then act on.
LRESULT CALLBACK ResultView::subclass_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                           UINT_PTR id, DWORD_PTR) {
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, subclass_proc, id);
  if (message != WM_CHAR || GetKeyState(VK_SHIFT) >= 0) {
    return DefSubclassProc(window, message, wparam, lparam);
  }
  const WithoutShift unshifted;
  return DefSubclassProc(window, message, wparam, lparam);
}

void ResultView::show_all() const {
  set_row_count(0, false);  // takes the selection with it
  set_row_count(static_cast<int>(results_.file_count()), false);
}

void ResultView::show_more() const {
  const int count = static_cast<int>(results_.file_count());
  if (count != row_count()) set_row_count(count, true);
}

void ResultView::show_order(SortKey key, bool descending) const {
  const bool natural_ascending = key != SortKey::date && key != SortKey::size;
  const int column = static_cast<int>(key);
  set_sort_arrow(column <= last_column ? column : -1, natural_ascending != descending);
}

void ResultView::set_width(int column, int pixels) {
  set_column_width(column, pixels);
  set_[column] = column_width(column);
}

void ResultView::set_column_widths(const ColumnWidths& users, int dpi) {
  users_ = users;
  for (int i = 0; i < result_columns; ++i) {
    const bool by_design = users_[i] == 0;
    set_width(i, by_design ? win32::scale(columns[i].width, dpi)
                           : static_cast<int>(to_pixels(users_[i], dpi)));
  }
}

/// Asks the view instead of following events: systems report differently how mouse and keyboard
/// resize columns. One that was closed is the user's too, and not 0, which means the design's.
const ColumnWidths& ResultView::column_widths(int dpi) {
  for (int i = 0; i < result_columns; ++i) {
    const int width = column_width(i);
    if (width == std::exchange(set_[i], width)) continue;
    users_[i] = std::clamp(static_cast<int>(to_twips(width, dpi)), 1, widest_column);
  }
  return users_;
}

void ResultView::fit_last_column(int dpi) {
  if (column_widths(dpi)[last_column] != 0) return;
  RECT area;
  GetWindowRect(handle(), &area);
  // Room for the scroll bar is kept even while there is none: no second one appears with it.
  int width = area.right - area.left - 2 * win32::metrics(SM_CXEDGE, dpi) -
              win32::metrics(SM_CXVSCROLL, dpi);
  for (int i = 0; i < last_column; ++i) width -= column_width(i);
  set_width(last_column, std::max(width, win32::scale(columns[last_column].width, dpi)));
}

void ResultView::select_stem(int row) const {
  const std::string& name = results_.record(static_cast<std::size_t>(row)).filename;
  select_in_label(win32::wide(name_stem(name)).size());
}

void ResultView::LVN_GetDispInfo(NMLVDISPINFOW& request) const {
  const auto row = static_cast<std::size_t>(request.item.iItem);
  const int column = request.item.iSubItem;
  // The view may still ask for rows that a new search has just dropped.
  const bool known = row < results_.file_count() && column >= 0 && column <= last_column;
  win32::answer_text(
      request, known ? row_cell(results_.record(row), static_cast<ResultColumn>(column), format_)
                     : std::string());
}

int ResultView::LVN_ODFindItem(const NMLVFINDITEMW& request) const {
  const std::optional<win32::FindRequest> wanted = win32::read_find_request(request);
  return wanted ? find_by_name(results_, *wanted) : -1;
}

}  // namespace tallowmere
