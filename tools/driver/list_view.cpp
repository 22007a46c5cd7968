#include "tools/driver/list_view.h"

#include <commctrl.h>

#include <cwchar>

#include "tools/driver/remote_memory.h"
#include "tools/driver/text.h"

namespace tallowmere::driver {

namespace {

constexpr int text_limit = 2048;  // characters of a cell that are read

/// An item structure followed by the text to which it points, as both are in the other process.
template <typename Item>
struct ItemWithText {
  Item item;
  wchar_t text[text_limit];
};

}  // namespace

Window ListView::header() const {
  return Window(reinterpret_cast<HWND>(SendMessageW(handle(), LVM_GETHEADER, 0, 0)));
}

int ListView::count() const {
  return static_cast<int>(SendMessageW(handle(), LVM_GETITEMCOUNT, 0, 0));
}

std::vector<std::string> ListView::headers() const {
  using Packet = ItemWithText<HDITEMW>;
  const Window top = header();
  RemoteMemory memory(top.handle(), sizeof(Packet));
  std::vector<std::string> texts;
  const LRESULT columns = SendMessageW(top.handle(), HDM_GETITEMCOUNT, 0, 0);
  for (LRESULT column = 0; column < columns; ++column) {
    Packet packet{};
    packet.item.mask = HDI_TEXT;
    packet.item.pszText = reinterpret_cast<wchar_t*>(memory.address(offsetof(Packet, text)));
    packet.item.cchTextMax = text_limit;
    memory.write(&packet, sizeof packet);
    SendMessageW(top.handle(), HDM_GETITEMW, static_cast<WPARAM>(column), memory.address());
    memory.read(&packet, sizeof packet);
    texts.push_back(from_wide(std::wstring_view(packet.text, wcsnlen(packet.text, text_limit))));
  }
  return texts;
}

std::string ListView::cell(int row, int column) const {
  using Packet = ItemWithText<LVITEMW>;
  RemoteMemory memory(handle(), sizeof(Packet));
  Packet packet{};
  packet.item.iSubItem = column;
  packet.item.pszText = reinterpret_cast<wchar_t*>(memory.address(offsetof(Packet, text)));
  packet.item.cchTextMax = text_limit;
  memory.write(&packet, sizeof packet);
  const LRESULT length =
      SendMessageW(handle(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row), memory.address());
  return from_wide(memory.read_text(static_cast<std::size_t>(length), offsetof(Packet, text)));
}

std::vector<ListView::Row> ListView::rows() const {
  const int columns = static_cast<int>(headers().size());
  std::vector<Row> all(static_cast<std::size_t>(count()));
  for (std::size_t row = 0; row < all.size(); ++row) {
    for (int column = 0; column < columns; ++column) {
      all[row].push_back(cell(static_cast<int>(row), column));
    }
  }
  return all;
}

std::vector<std::string> ListView::column(int column) const {
  std::vector<std::string> texts;
  const int rows = count();
  for (int row = 0; row < rows; ++row) texts.push_back(cell(row, column));
  return texts;
}

std::vector<int> ListView::selected() const {
  std::vector<int> rows;
  LRESULT row = -1;
  while ((row = SendMessageW(handle(), LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED)) >=
         0) {
    rows.push_back(static_cast<int>(row));
  }
  return rows;
}

void ListView::select(int row, bool selected) const {
  LVITEMW item{};
  item.stateMask = selected ? LVIS_SELECTED | LVIS_FOCUSED : LVIS_SELECTED;
  item.state = selected ? item.stateMask : 0;
  RemoteMemory memory(handle(), sizeof item);
  memory.write(&item, sizeof item);
  SendMessageW(handle(), LVM_SETITEMSTATE, static_cast<WPARAM>(row), memory.address());
}

Window ListView::label_editor() const {
  return Window(reinterpret_cast<HWND>(SendMessageW(handle(), LVM_GETEDITCONTROL, 0, 0)));
}

void ListView::click_header(int column) const {
  const Window top = header();
  RemoteMemory memory(top.handle(), sizeof(RECT));
  RECT area{};
  SendMessageW(top.handle(), HDM_GETITEMRECT, static_cast<WPARAM>(column), memory.address());
  memory.read(&area, sizeof area);
  const LPARAM place = MAKELPARAM((area.left + area.right) / 2, (area.top + area.bottom) / 2);
  PostMessageW(top.handle(), WM_LBUTTONDOWN, MK_LBUTTON, place);
  PostMessageW(top.handle(), WM_LBUTTONUP, 0, place);
}

}  // namespace tallowmere::driver
