#include "app/note_label.h"

#include <commctrl.h>

#include <algorithm>
#include <string>
#include <vector>

#include "shell/shortened_path.h"
#include "win32/text.h"

namespace tallowmere {

namespace {

constexpr Twips gap_width = 120;

/// Asks for the room that the text takes on one line; not in every compiler's headers.
constexpr UINT get_ideal_size = WM_USER + 0x301;

/// The pixels that a text takes in a label.
int text_width(const win32::Control& label, const std::wstring& text) {
  const HDC canvas = GetDC(label.handle());
  const auto font = reinterpret_cast<HFONT>(SendMessageW(label.handle(), WM_GETFONT, 0, 0));
  const HGDIOBJ old_font = SelectObject(canvas, font);
  SIZE size{};
  GetTextExtentPoint32W(canvas, text.c_str(), static_cast<int>(text.size()), &size);
  SelectObject(canvas, old_font);
  ReleaseDC(label.handle(), canvas);
  return static_cast<int>(size.cx);
}

void move(HWND control, const RECT& place) {
  SetWindowPos(control, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

}  // namespace

NoteLabel::NoteLabel(HWND window, const win32::Label& lblFileInfo, win32::ToolTip& tips)
    : Control(window), lblFileInfo_(lblFileInfo), tips_(tips) {}

void NoteLabel::show(const Note& note, bool usable) {
  const int info_width = text_width(lblFileInfo_, lblFileInfo_.units());
  const bool same = note == note_ && info_width == info_width_;
  if (same && usable == usable_) return;
  const std::optional<NoteLink> focused = focused_link();
  note_ = note;
  usable_ = usable;
  info_width_ = info_width;
  if (same) {
    enable_links();
  } else {
    fit();
  }
  if (focused) focus_link(*focused);
}

void NoteLabel::place(const TwipRect& row, int dpi) {
  const auto pixels = [dpi](Twips twips) { return static_cast<LONG>(to_pixels(twips, dpi)); };
  row_ = {pixels(row.left), pixels(row.top), pixels(row.right()), pixels(row.bottom())};
  gap_ = static_cast<int>(pixels(gap_width));
  info_width_ = text_width(lblFileInfo_, lblFileInfo_.units());
  fit();
}

/// Finds the link by its id: on some systems its index also counts the texts between the links.
std::optional<NoteLink> NoteLabel::link_of(const NMHDR& notification) const {
  const auto& item = reinterpret_cast<const NMLINK&>(notification).item;
  for (const NoteLink link : note_.links()) {
    if (std::to_wstring(static_cast<int>(link)) == item.szID) return link;
  }
  return std::nullopt;
}

bool NoteLabel::tab_leaves(bool backwards) const {
  const std::vector<NoteLink> links = note_.links();
  return !links.empty() && focused_link() == (backwards ? links.front() : links.back());
}

std::optional<NoteLink> NoteLabel::focused_link() const {
  LITEM item{};
  item.mask = LIF_ITEMINDEX | LIF_STATE;
  item.stateMask = LIS_FOCUSED;
  for (const NoteLink link : note_.links()) {
    send(LM_GETITEM, 0, reinterpret_cast<LPARAM>(&item));
    if ((item.state & LIS_FOCUSED) != 0) return link;
    ++item.iLink;
  }
  return std::nullopt;
}

/// Moves the focus back to its link: a new text leaves it with the first one or with none. Does so
/// by keys: not every system's control takes LIS_FOCUSED.
void NoteLabel::focus_link(NoteLink focused) const {
  const std::vector<NoteLink> links = note_.links();
  const auto place = std::ranges::find(links, focused);
  if (!has_focus() || place == links.end()) return;
  send(WM_SETFOCUS, 0, 0);
  for (auto link = links.begin(); link != place; ++link) send(WM_KEYDOWN, VK_TAB, 1);
}

/// Fits the note in beside the file information, which keeps its room. Links that do not fit are
/// cut.
void NoteLabel::fit() {
  const int room = std::max(static_cast<int>(row_.right - row_.left) - info_width_ - gap_, 0);
  const Note note = fitted(room);
  const std::size_t all = note.text_count();
  const std::size_t least = note.links().empty() ? 1 : 0;
  std::size_t texts = all;
  int width = try_texts(note, texts);
  while (width > room && texts > least) width = try_texts(note, --texts);
  tips_.set(handle(), texts < all || width > room ? note_texts(note_) : "");
  width = std::min(width, room);
  enable_links();

  RECT info = row_;
  RECT place = row_;
  place.left = row_.right - width;
  if (!note_.empty()) info.right = std::max(place.left - gap_, row_.left);
  move(lblFileInfo_.handle(), info);
  move(handle(), place);
  Control::show(!note_.empty());
  // Each may have been where the other one is now.
  for (const HWND label : {lblFileInfo_.handle(), handle()}) InvalidateRect(label, nullptr, TRUE);
}

/// The note with its folder shortened. The control may need some pixels more than the text.
Note NoteLabel::fitted(int room) const {
  Note note = note_;
  for (NotePart& part : note.parts) {
    if (!part.is_folder) continue;
    part.text = shortened_path(part.text, [&](const std::string& text) {
      return text_width(*this, win32::wide(text)) + gap_ / 2 <= room;
    });
  }
  return note;
}

/// The pixels that the note takes with so many of its texts, which the label shows from now on.
int NoteLabel::try_texts(const Note& note, std::size_t count) {
  set_text(note_markup(note, count));
  SIZE size{};
  send(get_ideal_size, static_cast<WPARAM>(GetSystemMetrics(SM_CXVIRTUALSCREEN)),
       reinterpret_cast<LPARAM>(&size));
  return static_cast<int>(size.cx);
}

void NoteLabel::enable_links() const {
  const int links = static_cast<int>(note_.links().size());
  const LONG_PTR style = GetWindowLongPtrW(handle(), GWL_STYLE) & ~WS_TABSTOP;
  SetWindowLongPtrW(handle(), GWL_STYLE, links == 0 ? style : style | WS_TABSTOP);
  for (int i = 0; i < links; ++i) {
    LITEM item{};
    item.mask = LIF_ITEMINDEX | LIF_STATE;
    item.iLink = i;
    item.state = usable_ ? LIS_ENABLED : 0;
    item.stateMask = LIS_ENABLED;
    send(LM_SETITEM, 0, reinterpret_cast<LPARAM>(&item));
  }
}

}  // namespace tallowmere
