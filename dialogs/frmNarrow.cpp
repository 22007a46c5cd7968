#include "dialogs/frmNarrow.h"

#include "dialogs/option_group.h"
#include "dialogs/resource.h"

namespace tallowmere {

frmNarrow::frmNarrow(HWND owner, bool& cancelled)
    : Form(IDD_NARROW, owner),
      Command1(item(IDOK)),
      Command2(item(IDCANCEL)),
      owner_(owner),
      cancelled_(cancelled) {
  for (int i = 0; i < 3; ++i) {
    Option1[i] = win32::OptionButton(item(IDC_NARROW_OPTION + i));
    Label1[i].attach(item(IDC_NARROW_LABEL + i), item(IDC_NARROW_OPTION + i));
  }
  wire();
}

void frmNarrow::wire() {
  for (int i = 0; i < 3; ++i) {
    command(IDC_NARROW_LABEL + i, STN_CLICKED, [this, i] { Label1_MouseDown(i); });
    command(IDC_NARROW_LABEL + i, STN_DBLCLK, [this, i] { Label1_DblClick(i); });
    command(IDC_NARROW_OPTION + i, BN_DOUBLECLICKED, [this, i] { Option1_DblClick(i); });
  }
  clicked(IDOK, [this] { Command1_Click(); });
  clicked(IDCANCEL, [this] { Command2_Click(); });
}

bool frmNarrow::ask(SearchKind& kind, int list2_index, bool file_selectable) {
  for (int i = 0; i < 3; ++i) {
    const std::string_view answer = narrow_answer(static_cast<SearchKind>(i), list2_index);
    Label1[i].set_text(answer);
    Option1[i].set_text(answer);  // too narrow to show it: for assistive tools
  }
  const int file = static_cast<int>(SearchKind::file_search);
  Option1[file].enable(file_selectable);
  Label1[file].enable(file_selectable);
  const bool possible = file_selectable || kind != SearchKind::file_search;
  select_option(Option1, possible ? static_cast<int>(kind) : 0);
  cancelled_ = true;
  show_modal(owner_);
  if (cancelled_) return false;
  kind = static_cast<SearchKind>(selected());
  return true;
}

int frmNarrow::selected() const {
  return selected_option(Option1, 0);
}

void frmNarrow::Form_Activate() {
  Option1[selected()].focus();
}

void frmNarrow::Label1_MouseDown(int index) {
  select_option(Option1, index);
  Option1[index].focus();
}

void frmNarrow::Label1_DblClick(int index) {
  Label1_MouseDown(index);
  Command1_Click();
}

void frmNarrow::Option1_DblClick(int index) {
  Label1_DblClick(index);
}

void frmNarrow::Command1_Click() {
  hide_from(Command1.handle());
  cancelled_ = false;
}

void frmNarrow::Command2_Click() {
  hide_from(Command1.handle());
  cancelled_ = true;
}

}  // namespace tallowmere
