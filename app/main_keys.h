#pragma once

#include <windows.h>

#include <array>
#include <functional>

#include "app/note_label.h"
#include "app/result_view.h"
#include "app/viewer_box.h"
#include "win32/controls.h"
#include "win32/form.h"

namespace tallowmere {

/// The keys that the main window sees before its controls do.
class MainKeys {
 public:
  /// What the keys act on. All of it outlives this object.
  struct Window {
    win32::Form& form;
    const ResultView& ListView2;
    const ViewerBox& Text1;
    const NoteLabel& lblNote;
    std::array<const win32::Button*, 8> buttons;  ///< from left to right
    std::function<bool()> busy;
    std::function<bool()> list_is_of_use;  ///< it has rows and is not being filled
    std::function<bool(int command)> run;  ///< false: the command cannot be used now
    std::function<void()> open_selected;   ///< as a double click on the selected row
  };

  explicit MainKeys(Window window) : window_(std::move(window)) {}

  /// Handles a key that went down; returns true when that has used it up.
  bool key_down(WPARAM key) const;

 private:
  bool list_key_down(WPARAM key, bool shift, bool control) const;
  bool viewer_key_down(WPARAM key, bool shift, bool control) const;
  bool note_key_down(WPARAM key, bool shift) const;
  bool button_key_down(WPARAM key) const;
  bool find(bool forward) const;
  bool select_first_row() const;

  Window window_;
};

}  // namespace tallowmere
