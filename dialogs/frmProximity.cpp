#include "dialogs/frmProximity.h"

#include "dialogs/option_group.h"
#include "dialogs/resource.h"
#include "win32/message_box.h"

namespace tallowmere {

frmProximity::frmProximity(HWND owner)
    : Form(SpinBox::prepare(IDD_PROXIMITY), owner),
      Label2(item(IDC_PROX_LABEL2)),
      Label3(item(IDC_PROX_LABEL3)),
      Label4(item(IDC_PROX_LABEL4)),
      Label6(item(IDC_PROX_LABEL6)),
      cmdDefault(item(IDC_PROX_DEFAULT)),
      cmdOK(item(IDOK)),
      cmdCancel(item(IDCANCEL)) {
  const SpinSteps steps{1, proximity_page_key_step, proximity_mouse_step};
  for (int i = 0; i < 2; ++i) {
    Label1[i] = win32::Label(item(IDC_PROX_LABEL1 + i));
    Option1[i] = win32::OptionButton(item(IDC_PROX_OPTION + i));
    Picture1[i].attach(item(IDC_PROX_PICTURE + i), item(IDC_PROX_SCROLL + i),
                       SpinField(proximity_min, proximity_max, proximity_default, steps));
  }
  show_choice();
  wire();
}

void frmProximity::wire() {
  for (int i = 0; i < 2; ++i) {
    command(IDC_PROX_LABEL1 + i, STN_CLICKED, [this, i] { Label1_Click(i); });
    command(IDC_PROX_OPTION + i, BN_CLICKED, [this, i] { Option1_Click(i); });
    command(IDC_PROX_PICTURE + i, EN_CHANGE, [this, i] { VScroll1_Change(i); });
    notify(IDC_PROX_SCROLL + i, static_cast<UINT>(UDN_DELTAPOS),
           [this, i](NMHDR& header) { return Picture1[i].VScroll1_Change(header); });
  }
  clicked(IDC_PROX_DEFAULT, [this] { cmdDefault_Click(); });
  clicked(IDOK, [this] { cmdOK_Click(); });
  clicked(IDCANCEL, [this] { cmdCancel_Click(); });
}

void frmProximity::ini_frmProximity(bool& prox_all, int& prox_before, int& prox_after) {
  choice_.ini_frmProximity(prox_all, prox_before, prox_after);
  show_choice();
}

void frmProximity::show_choice() {
  // Copies: each box reports its change, which writes into the choice.
  const ProximityChoice choice = choice_;
  Picture1[0].set_value(choice.before);
  Picture1[1].set_value(choice.after);
  select_option(Option1, choice.all_words ? 1 : 0);
  Label6.set_text(choice.explanation());
}

void frmProximity::Form_Activate() {
  choice_.remember();
  Picture1[0].focus();
}

void frmProximity::VScroll1_Change(int index) {
  (index == 0 ? choice_.before : choice_.after) = Picture1[index].value();
  if (IsWindowVisible(Picture1[index].handle())) Picture1[index].focus();
}

void frmProximity::Label1_Click(int index) {
  Picture1[index].focus();
}

void frmProximity::Option1_Click(int index) {
  choice_.all_words = index == 1;
  Label6.set_text(choice_.explanation());
}

void frmProximity::cmdDefault_Click() {
  choice_.reset();
  show_choice();
}

void frmProximity::cmdOK_Click() {
  if (!choice_.acceptable()) {
    win32::message_box(handle(), zero_proximity_text, "Tallowmere 32", win32::BoxIcon::exclamation);
    return;
  }
  hide_from(cmdOK.handle());
}

void frmProximity::cmdCancel_Click() {
  hide_from(cmdOK.handle());
  choice_.restore();
  show_choice();
}

}  // namespace tallowmere
