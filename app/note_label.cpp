#include "app/note_label.h"

#include <commctrl.h>

#include <algorithm>
#include <string_view>

namespace tallowmere {

namespace {

constexpr Twips gap_width = 120;

/// The room that the text takes on one line; not in every compiler's headers.
constexpr UINT get_ideal_size = WM_USER + 0x301;

/// The pixels that a label's text takes.
int text_width(const win32::Label& label) {
  const std::wstring text = label.units();
  const HDC canvas = GetDC(label.handle());
  const auto font = reinterpret_cast<HFONT>(SendMessageW(label.handle(), WM_GETFONT, 0, 0));
  const HGDIOBJ old_font = SelectObject(canvas, font);
  SIZE size{};
  GetTextExtentPoint32W(canvas, text.c_str(), static_cast<int>(text.size()), &size);
  SelectObject(canvas, old_font);
  ReleaseDC(label.handle(), canvas);
  return static_cast<int>(size.cx);
}

std::string link_markup(NoteLink link) {
  return link == NoteLink::none ? "" : "<a>" + std::string(link_text(link)) + "</a>";
}

void move(HWND control, const RECT& place) {
  SetWindowPos(control, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

}  // namespace

NoteLabel::NoteLabel(HWND window, const win32::Label& lblFileInfo, win32::ToolTip& tips)
    : Control(window), lblFileInfo_(lblFileInfo), tips_(tips) {}

void NoteLabel::show(const Note& note, bool usable) {
  const int info_width = text_width(lblFileInfo_);
  const bool same = note == note_ && info_width == info_width_;
  if (same && usable == usable_) return;
  note_ = note;
  usable_ = usable;
  info_width_ = info_width;
  if (same) {
    enable_link();
  } else {
    fit();
  }
}

void NoteLabel::place(const TwipRect& row, int dpi) {
  const auto pixels = [dpi](Twips twips) { return static_cast<LONG>(to_pixels(twips, dpi)); };
  row_ = {pixels(row.left), pixels(row.top), pixels(row.right()), pixels(row.bottom())};
  gap_ = static_cast<int>(pixels(gap_width));
  info_width_ = text_width(lblFileInfo_);
  fit();
}

void NoteLabel::fit() {
  const std::string link = link_markup(note_.link);
  const int room = static_cast<int>(row_.right - row_.left) - info_width_ - gap_;
  int width = try_text(link.empty() ? note_.text : note_.text + " " + link);
  const bool link_alone = width > room && !link.empty();
  if (link_alone) width = try_text(link);
  tips_.set(handle(), link_alone ? note_.text : "");
  enable_link();

  RECT info = row_;
  RECT note = row_;
  note.left = std::max(row_.right - width, row_.left);
  if (!note_.empty()) info.right = std::max(note.left - gap_, row_.left);
  move(lblFileInfo_.handle(), info);
  move(handle(), note);
  Control::show(!note_.empty());
  // Each may have stood where the other one is now.
  for (const HWND label : {lblFileInfo_.handle(), handle()}) InvalidateRect(label, nullptr, TRUE);
}

/// The pixels that this text takes, which is the label's from now on.
int NoteLabel::try_text(const std::string& markup) {
  set_text(markup);
  SIZE size{};
  send(get_ideal_size, static_cast<WPARAM>(GetSystemMetrics(SM_CXVIRTUALSCREEN)),
       reinterpret_cast<LPARAM>(&size));
  return static_cast<int>(size.cx);
}

void NoteLabel::enable_link() const {
  const LONG_PTR style = GetWindowLongPtrW(handle(), GWL_STYLE) & ~WS_TABSTOP;
  SetWindowLongPtrW(handle(), GWL_STYLE, note_.link == NoteLink::none ? style : style | WS_TABSTOP);
  LITEM item{};
  item.mask = LIF_ITEMINDEX | LIF_STATE;
  item.state = usable_ ? LIS_ENABLED : 0;
  item.stateMask = LIS_ENABLED;
  send(LM_SETITEM, 0, reinterpret_cast<LPARAM>(&item));
}

}  // namespace tallowmere
