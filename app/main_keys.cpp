#include "app/main_keys.h"

#include <algorithm>
#include <iterator>

#include "app/resource.h"

namespace tallowmere {

bool MainKeys::key_down(WPARAM key) const {
  if (window_.ListView2.editing_label()) return false;
  const bool shift = GetKeyState(VK_SHIFT) < 0;
  const bool control = GetKeyState(VK_CONTROL) < 0;
  switch (key) {
    case VK_ESCAPE:
      if (window_.busy()) return window_.run(ID_MNUSTOP);
      [[fallthrough]];
    case VK_BACK:
      window_.form.move_focus(window_.ListView2.handle());
      return true;
    case VK_F3:
      return find(!shift);
    case 'F':
      if (!control || shift || GetKeyState(VK_MENU) < 0) break;
      window_.run(ID_MNUSTART);
      return true;
  }
  if (window_.ListView2.has_focus()) return list_key_down(key, shift, control);
  if (window_.Text1.has_focus()) return viewer_key_down(key, shift, control);
  if (window_.lblNote.has_focus()) return note_key_down(key, shift);
  return button_key_down(key);
}

bool MainKeys::list_key_down(WPARAM key, bool shift, bool control) const {
  const auto use = [this](int command) {
    window_.run(command);
    return true;
  };
  switch (key) {
    case VK_RETURN:
      if (shift || control) return use(ID_MNULAUNCH);
      window_.open_selected();
      return true;
    case VK_SPACE:
      return !shift && !control && (find(true) || select_first_row());
    case VK_DOWN:
    case VK_UP:
    case VK_HOME:
      return !shift && !control && select_first_row();
    case VK_DELETE:
      return use(ID_MNUDELETE);
    case VK_F2:
      window_.ListView2.edit_label();
      return true;
    case 'A':
      return control && use(ID_MNUSELECTALL);
    case 'C':
    case VK_INSERT:
      return control && use(ID_MNUCOPYFILENAME);
  }
  return false;
}

bool MainKeys::viewer_key_down(WPARAM key, bool shift, bool control) const {
  const bool plain = !shift && !control && GetKeyState(VK_MENU) >= 0;
  if (plain && (key == VK_RETURN || key == VK_SPACE)) return find(true);
  const bool copies = control && !shift && (key == 'C' || key == VK_INSERT);
  if (copies) window_.run(ID_MNUCOPYTOCLIPBOARD);
  return copies;
}

/// Steps to the next or previous hit; returns false when no file is viewed.
bool MainKeys::find(bool forward) const {
  return window_.run(forward ? IDC_CMDFINDNEXT : IDC_CMDFINDPREV);
}

/// Selects the row that has the focus mark, as the first key does in a list without a selection.
/// Returns false when something is selected already.
bool MainKeys::select_first_row() const {
  const ResultView& list = window_.ListView2;
  if (window_.busy() || list.row_count() == 0 || list.selected_count() > 0) return false;
  list.select_only(std::max(list.focused(), 0));
  return true;
}

bool MainKeys::note_key_down(WPARAM key, bool shift) const {
  switch (key) {
    case VK_SPACE:
      window_.lblNote.press_link();
      return true;
    case VK_TAB:
      if (!window_.lblNote.tab_leaves(shift)) return false;
      SendMessageW(window_.form.handle(), WM_NEXTDLGCTL, shift, FALSE);
      return true;
  }
  return false;
}

/// The arrow keys on the row of buttons: it ends at its ends, and the list is below it. Other keys
/// are the buttons' own.
bool MainKeys::button_key_down(WPARAM key) const {
  const auto& buttons = window_.buttons;
  const auto button = std::ranges::find_if(buttons, &win32::Button::has_focus);
  if (button == buttons.end()) return false;
  switch (key) {
    case VK_LEFT: {
      const auto before = std::find_if(std::make_reverse_iterator(button), buttons.rend(),
                                       std::mem_fn(&win32::Button::enabled));
      if (before != buttons.rend()) window_.form.move_focus((*before)->handle());
      return true;
    }
    case VK_RIGHT: {
      const auto behind =
          std::find_if(std::next(button), buttons.end(), std::mem_fn(&win32::Button::enabled));
      if (behind != buttons.end()) window_.form.move_focus((*behind)->handle());
      return true;
    }
    case VK_UP:
    case VK_DOWN:
      if (window_.list_is_of_use()) window_.form.move_focus(window_.ListView2.handle());
      return true;
  }
  return false;
}

}  // namespace tallowmere
