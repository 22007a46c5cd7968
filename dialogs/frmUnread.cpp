#include "dialogs/frmUnread.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string>

#include "dialogs/resource.h"
#include "shell/run_texts.h"
#include "win32/clipboard.h"
#include "win32/dpi.h"
#include "win32/hourglass.h"
#include "win32/message_box.h"
#include "win32/text_file.h"

namespace tallowmere {
namespace {

enum Column { path_column, reason_column };

constexpr int reason_width = 190;  ///< pixels at 96 dots per inch, as the limits below
constexpr SIZE least_size{400, 220};

constexpr win32::FileKind kinds[] = {{"Text files", "txt"}, {"All files", "*"}};

SIZE size_of(const win32::Control& control) {
  RECT area;
  GetWindowRect(control.handle(), &area);
  return {area.right - area.left, area.bottom - area.top};
}

std::vector<std::size_t> all_rows(std::size_t count) {
  std::vector<std::size_t> rows(count);
  std::iota(rows.begin(), rows.end(), std::size_t{0});
  return rows;
}

}  // namespace

frmUnread::frmUnread(HWND owner, const std::vector<UnreadFile>& unread)
    : Form(IDD_UNREAD, owner),
      Label1(item(IDC_UNREAD_LABEL1)),
      ListView1(item(IDC_UNREAD_LIST)),
      cmdCopy(item(IDC_UNREAD_COPY)),
      cmdSave(item(IDC_UNREAD_SAVE)),
      cmdClose(item(IDCANCEL)),
      owner_(owner),
      unread_(unread) {
  Label1.set_text(not_read_text(unread.size()) + ":");
  ListView1.add_styles(LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_INFOTIP |
                       LVS_EX_LABELTIP);
  ListView1.add_column(path_column, "File", false);
  ListView1.add_column(reason_column, "Reason", false);
  ListView1.set_column_width(reason_column,
                             win32::scale(reason_width, win32::window_dpi(handle())));
  ListView1.set_row_count(static_cast<int>(unread.size()), false);
  place_controls();
  notify(IDC_UNREAD_LIST, static_cast<UINT>(LVN_GETDISPINFOW), [this](NMHDR& header) -> LRESULT {
    answer(reinterpret_cast<NMLVDISPINFOW&>(header));
    return 0;
  });
  clicked(IDC_UNREAD_COPY, [this] { cmdCopy_Click(); });
  clicked(IDC_UNREAD_SAVE, [this] { cmdSave_Click(); });
  clicked(IDCANCEL, [this] { hide(); });
}

void frmUnread::on_shown() {
  ListView1.mark(0);
  ListView1.focus();
}

/// Adds the keys of other lists, which this control lacks.
bool frmUnread::pre_translate(MSG& message) {
  const bool control = GetKeyState(VK_CONTROL) < 0 && GetKeyState(VK_MENU) >= 0;
  if (message.message != WM_KEYDOWN || !control || !IsWindowEnabled(handle())) return false;
  switch (message.wParam) {
    case 'A':
      ListView1.select_all();
      return true;
    case 'C':
    case VK_INSERT:
      cmdCopy_Click();
      return true;
  }
  return false;
}

bool frmUnread::on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  result = 0;
  switch (message) {
    case WM_SIZE:
      if (wparam != SIZE_MINIMIZED) place_controls();
      return true;
    case WM_GETMINMAXINFO:
      limit_size(*reinterpret_cast<MINMAXINFO*>(lparam));
      return true;
  }
  return false;
}

void frmUnread::on_dpi_changed(int before, int now) {
  for (const int column : {0, 1}) {
    ListView1.set_column_width(column, MulDiv(ListView1.column_width(column), now, before));
  }
  place_controls();
}

/// Gives the list what the buttons below it leave. The left margin and the sizes of the buttons are
/// the template's, as the system has fitted them.
void frmUnread::place_controls() const {
  RECT client;
  GetClientRect(handle(), &client);
  POINT corner = ListView1.corner();
  ScreenToClient(handle(), &corner);
  const int margin = corner.x;
  const SIZE button = size_of(cmdClose);
  const int top = client.bottom - margin - button.cy;
  const int width = client.right - 2 * margin;
  const auto place = [](const win32::Control& control, int left, int y, int cx, int cy) {
    SetWindowPos(control.handle(), nullptr, left, y, std::max(cx, 0), std::max(cy, 0),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
  };
  place(ListView1, margin, corner.y, width, top - margin - corner.y);
  int right = client.right - margin;
  for (const win32::Button* next : {&cmdClose, &cmdSave, &cmdCopy}) {
    place(*next, right - button.cx, top, button.cx, button.cy);
    right -= button.cx + margin / 2;
  }
  const int dpi = win32::window_dpi(handle());
  ListView1.set_column_width(path_column, std::max(width - ListView1.column_width(reason_column) -
                                                       2 * win32::metrics(SM_CXEDGE, dpi) -
                                                       win32::metrics(SM_CXVSCROLL, dpi),
                                                   win32::scale(reason_width, dpi)));
}

void frmUnread::limit_size(MINMAXINFO& limits) const {
  const int dpi = win32::window_dpi(handle());
  limits.ptMinTrackSize = {win32::scale(least_size.cx, dpi), win32::scale(least_size.cy, dpi)};
}

void frmUnread::answer(NMLVDISPINFOW& request) const {
  const auto row = static_cast<std::size_t>(request.item.iItem);
  if (row >= unread_.size()) return;
  const UnreadFile& file = unread_[row];
  win32::answer_text(request, request.item.iSubItem == path_column ? file.path : file.reason);
}

/// Copies the selected rows, or all of them when none is selected.
void frmUnread::cmdCopy_Click() {
  const win32::Hourglass hourglass;
  std::vector<std::size_t> rows = ListView1.selected_rows();
  if (rows.empty()) rows = all_rows(unread_.size());
  bool copied = false;
  {
    win32::Clipboard clipboard(handle());
    copied = clipboard && clipboard.set_text(unread_lines(unread_, rows));
  }
  if (copied) return;
  win32::message_box(handle(), "The text could not be placed onto the Clipboard. Please try again.",
                     "Cannot Copy to Clipboard", win32::BoxIcon::exclamation);
}

void frmUnread::cmdSave_Click() {
  const auto place = win32::ask_save_place(handle(), "unread.txt", kinds);
  if (!place) return;
  const win32::Hourglass hourglass;
  const auto error =
      win32::write_text_file(place->path, unread_lines(unread_, all_rows(unread_.size())));
  if (!error) return;
  win32::message_box(handle(),
                     error->text + " - encountered while trying to SAVE " + place->path + ".",
                     "Cannot Save File", win32::BoxIcon::exclamation);
}

}  // namespace tallowmere
