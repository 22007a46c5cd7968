#pragma once

#include <array>

#include "dialogs/option_label.h"
#include "shell/search_kind.h"
#include "win32/controls.h"
#include "win32/form.h"

namespace tallowmere {

/// Asks whether the next search narrows the list or starts a new one.
class frmNarrow : public win32::Form {
 public:
  /// `cancelled` is the cancel flag that all dialogs share.
  frmNarrow(HWND owner, bool& cancelled);

  /// Asks with `kind` selected; true on OK, with the choice in `kind`. `list2_index` is the row of
  /// the list that a file search would take; without `file_selectable` there is none to take.
  bool ask(SearchKind& kind, int list2_index, bool file_selectable);

  std::array<win32::OptionButton, 3> Option1;
  std::array<OptionLabel, 3> Label1;
  win32::Button Command1;
  win32::Button Command2;

 protected:
  void on_shown() override { Form_Activate(); }

 private:
  void wire();
  void Form_Activate();
  void Label1_MouseDown(int index);
  void Label1_DblClick(int index);
  void Option1_DblClick(int index);
  void Command1_Click();
  void Command2_Click();
  int selected() const;

  HWND owner_;
  bool& cancelled_;
};

}  // namespace tallowmere
