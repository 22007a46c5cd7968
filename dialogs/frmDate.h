#pragma once

#include <array>
#include <string>

#include "dialogs/dialog_context.h"
#include "dialogs/option_label.h"
#include "dialogs/spin_box.h"
#include "shell/date_choice.h"
#include "win32/accessible_names.h"
#include "win32/controls.h"
#include "win32/form.h"
#include "win32/tooltip.h"

namespace tallowmere {

/// Asks which file dates the search accepts.
class frmDate : public win32::Form {
 public:
  /// Calls `display_panel_date` after OK, to rebuild the criteria dialog's summary.
  frmDate(HWND owner, const DialogContext& context, Handler display_panel_date);

  /// Fills the dialog from the search and shows it over `owner`, centred over the main window.
  void show(HWND owner, HWND main_window);

  std::string tool_tip(const win32::Control& control) const { return tips_.text(control.handle()); }

  std::array<win32::OptionButton, date_options> Option1;
  std::array<OptionLabel, date_options> Label1;
  win32::Label Label3, Label4, Label5;
  std::array<SpinBox, date_fields> Picture1;  ///< with their `Label2`, `Line1` and `VScroll1`
  win32::Button Command1, Command2, Command3;

 protected:
  void on_shown() override { Form_Activate(); }
  void on_dpi_changed(int before, int now) override;

 private:
  void wire();
  void Form_Activate();
  void Option1_GotFocus(int index);
  void Label1_Click(int index);
  void VScroll1_Change(int index);
  void Command1_Click();
  void Command2_Click();
  void Command3_Click();
  void show_choice();
  void show_field(int index);
  void arrange_fields();
  /// An area in dialog units, in pixels.
  RECT units(RECT area) const;

  DialogContext context_;
  Handler display_panel_date_;
  DateChoice choice_;
  win32::ToolTip tips_;
  win32::AccessibleNames names_;
  bool showing_ = false;  ///< the fields change because the choice did
};

}  // namespace tallowmere
