#include "app/row_tips.h"

#include <cstddef>

#include "shell/file_info.h"
#include "win32/controls.h"
#include "win32/text.h"
#include "win32/user_locale.h"

namespace tallowmere {

namespace {

constexpr UINT_PTR subclass_id = 3;

/// How long the window waits for the line with a hit when a tip is to show and the mouse rests.
constexpr HitLineReader::Milliseconds patience{100};

}  // namespace

RowTips::RowTips(const Source& source)
    : source_(source),
      lines_(source.files, source.page, patience),
      tip_(source.ListView2.handle()) {
  SetWindowSubclass(source.ListView2.handle(), subclass_proc, subclass_id,
                    reinterpret_cast<DWORD_PTR>(this));
}

RowTips::~RowTips() {
  RemoveWindowSubclass(source_.ListView2.handle(), subclass_proc, subclass_id);
}

LRESULT CALLBACK RowTips::subclass_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                        UINT_PTR id, DWORD_PTR tips) {
  auto& self = *reinterpret_cast<RowTips*>(tips);
  switch (message) {
    case WM_NCDESTROY:
      RemoveWindowSubclass(window, subclass_proc, id);
      break;
    case WM_MOUSEMOVE:
      self.follow(win32::point_of(lparam));
      break;
    case LVM_SETITEMCOUNT:
    case WM_VSCROLL:
    case WM_HSCROLL:
    case WM_MOUSEWHEEL:
    case WM_KEYDOWN:
      self.forget();
      break;
    case WM_NOTIFY:
      if (self.answer(*reinterpret_cast<NMHDR*>(lparam))) return 0;
      break;
  }
  return DefSubclassProc(window, message, wparam, lparam);
}

/// Gives each row a tip of its own, which the system shows when the mouse has rested there.
void RowTips::follow(POINT at) {
  const ResultView& list = source_.ListView2;
  const int row = list.editing_label() ? -1 : list.row_at(at);
  if (row == row_) return;
  forget();
  if (row < 0) return;
  row_ = row;
  tip_.set_area(list.row_area(row));
}

/// Drops the tip: the rows are others now, or elsewhere.
void RowTips::forget() {
  if (row_ >= 0) tip_.clear_area();
  row_ = -1;
  text_.clear();
}

bool RowTips::answer(NMHDR& header) {
  if (header.code != TTN_GETDISPINFOW || !tip_.has_sent(header)) return false;
  if (text_.empty() && row_ >= 0) text_ = win32::wide(text_of(row_));
  reinterpret_cast<NMTTDISPINFOW&>(header).lpszText = text_.data();
  return true;
}

std::string RowTips::text_of(int row) {
  const auto index = static_cast<std::size_t>(row);
  if (index >= source_.results.file_count()) return {};
  const FileRecord record = source_.results.record(index);
  const std::string moment =
      record.filedate == 0 ? "" : win32::general_date(source_.clock.to_local(record.filedate));
  std::string text = record.filepath + record.filename + "\r\n" +
                     file_info_text(record.filesize, win32::thousands_separator(), moment);
  const std::string line = lines_.line_of(record.filepath, record.filename, source_.search);
  return line.empty() ? text : text + "\r\n" + line;
}

}  // namespace tallowmere
