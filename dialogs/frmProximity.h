#pragma once

#include <array>

#include "dialogs/spin_box.h"
#include "shell/proximity_choice.h"
#include "win32/controls.h"
#include "win32/form.h"

namespace tallowmere {

/// Asks for the range of a NEAR search. Its controls keep the values between showings; the criteria
/// reader takes them from here when a search begins.
class frmProximity : public win32::Form {
 public:
  explicit frmProximity(HWND owner);

  /// Fits the counts into the range, in place, and shows them.
  void ini_frmProximity(bool& prox_all, int& prox_before, int& prox_after);

  /// Shows the dialog over `owner`, centred over the main window, until OK or Cancel.
  void show(HWND owner, HWND main_window) { show_modal(owner, main_window); }

  int prox_before() const { return Picture1[0].value(); }
  int prox_after() const { return Picture1[1].value(); }
  bool prox_all() const { return Option1[1].selected(); }

  win32::Label Label2, Label3, Label4, Label6;
  std::array<win32::Label, 2> Label1;
  std::array<SpinBox, 2> Picture1;  ///< with their `lblNum` and `VScroll1`
  std::array<win32::OptionButton, 2> Option1;
  win32::Button cmdDefault, cmdOK, cmdCancel;

 protected:
  void on_shown() override { Form_Activate(); }

 private:
  void wire();
  void Form_Activate();
  void VScroll1_Change(int index);
  void Label1_Click(int index);
  void Option1_Click(int index);
  void cmdDefault_Click();
  void cmdOK_Click();
  void cmdCancel_Click();
  void show_choice();

  ProximityChoice choice_;
};

}  // namespace tallowmere
