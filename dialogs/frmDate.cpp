#include "dialogs/frmDate.h"

#include <utility>

#include "dialogs/option_group.h"
#include "dialogs/resource.h"

namespace tallowmere {
namespace {

// Lengths in dialog units.
constexpr int left = 96;
constexpr int label_width = 26;
constexpr int first_row = 27;
constexpr int second_row = 48;
constexpr int gap = 6;
constexpr int arrows_width = 11;
constexpr int box_height = 14;

int box_width(int index, int option) {
  const bool is_year = index % 3 == 2;
  return is_year || option == previous_days ? 34 : 24;
}

}  // namespace

frmDate::frmDate(HWND owner, const DialogContext& context, Handler display_panel_date)
    : Form(SpinBox::prepare(IDD_DATE), owner),
      Label3(item(IDC_DATE_LABEL3)),
      Label4(item(IDC_DATE_LABEL4)),
      Label5(item(IDC_DATE_LABEL5)),
      Command1(item(IDOK)),
      Command2(item(IDCANCEL)),
      Command3(item(IDC_DATE_RESET)),
      context_(context),
      display_panel_date_(std::move(display_panel_date)),
      tips_(handle()) {
  for (int i = 0; i < date_options; ++i) {
    Option1[i] = win32::OptionButton(item(IDC_DATE_OPTION + i));
    Label1[i].attach(item(IDC_DATE_CAPTION + i), item(IDC_DATE_OPTION + i));
    Label1[i].set_text(date_option_caption(i));
    Option1[i].set_text(date_option_caption(i));  // too narrow to show it: for assistive tools
  }
  constexpr int design_values[] = {12, 31, 1995};
  for (int i = 0; i < date_fields; ++i) {
    Picture1[i].attach(item(IDC_DATE_PICTURE + i), item(IDC_DATE_SCROLL + i),
                       SpinField(design_values[i % 3], design_values[i % 3], design_values[i % 3]));
  }
  wire();
}

void frmDate::wire() {
  for (int i = 0; i < date_options; ++i) {
    command(IDC_DATE_OPTION + i, BN_CLICKED, [this, i] { Option1_GotFocus(i); });
    command(IDC_DATE_OPTION + i, BN_SETFOCUS, [this, i] { Option1_GotFocus(i); });
    command(IDC_DATE_CAPTION + i, STN_CLICKED, [this, i] { Label1_Click(i); });
  }
  for (int i = 0; i < date_fields; ++i) {
    command(IDC_DATE_PICTURE + i, EN_CHANGE, [this, i] { VScroll1_Change(i); });
    notify(IDC_DATE_SCROLL + i, static_cast<UINT>(UDN_DELTAPOS),
           [this, i](NMHDR& header) { return Picture1[i].VScroll1_Change(header); });
  }
  clicked(IDOK, [this] { Command1_Click(); });
  clicked(IDCANCEL, [this] { Command2_Click(); });
  clicked(IDC_DATE_RESET, [this] { Command3_Click(); });
}

void frmDate::show(HWND owner, HWND main_window) {
  choice_.load(context_.search);
  show_choice();
  show_modal(owner, main_window);
}

void frmDate::Form_Activate() {
  Option1[choice_.option()].focus();
}

void frmDate::Option1_GotFocus(int index) {
  if (index == choice_.option() && Option1[index].selected()) return;
  choice_.select(index);
  show_choice();
}

void frmDate::Label1_Click(int index) {
  Option1_GotFocus(index);
  Option1[index].focus();
}

void frmDate::VScroll1_Change(int index) {
  if (!showing_ && choice_.field(index).visible) {
    choice_.set_field(index, Picture1[index].value());
  }
}

void frmDate::Command1_Click() {
  choice_.accept(context_.search);
  hide_from(Command1.handle());
  display_panel_date_();
}

void frmDate::Command2_Click() {
  hide_from(Command1.handle());
}

void frmDate::Command3_Click() {
  choice_.reset(context_.clock.today());
  show_choice();
}

void frmDate::show_choice() {
  showing_ = true;
  select_option(Option1, choice_.option());
  const DateTexts texts = choice_.texts();
  Label4.set_text(texts.description);
  Label3.set_text(texts.first_label);
  Label5.set_text(texts.second_label);
  Label3.show(!texts.first_label.empty());
  Label5.show(!texts.second_label.empty());
  arrange_fields();
  for (int i = 0; i < date_fields; ++i) show_field(i);
  showing_ = false;
}

void frmDate::show_field(int index) {
  const DateField field = choice_.field(index);
  SpinBox& box = Picture1[index];
  box.show_both(field.visible);
  tips_.set(box.handle(), field.name);
  tips_.set(box.arrows().handle(), field.name);
  if (!field.visible) return;
  names_.set(box.handle(), field.name);
  box.set_range(field.min, field.max);
  box.set_value(field.value);
}

void frmDate::on_dpi_changed(int, int) {
  tips_.fit();
  arrange_fields();
}

void frmDate::arrange_fields() {
  const int option = choice_.option();
  const int start = choice_.texts().first_label.empty() ? left : left + label_width;
  int x = start;  // of the next field
  for (int i = 0; i < date_fields; ++i) {
    if (!choice_.field(i).visible) continue;
    if (i == 3) x = start;
    const int y = i < 3 ? first_row : second_row;
    const int width = box_width(i, option);
    Picture1[i].place(units({x, y, x + width, y + box_height}));
    x += width + arrows_width + gap;
  }
  RECT label = units({left, second_row + 3, left + label_width, second_row + 11});
  if (option == previous_days) label = units({x, first_row + 3, x + 120, first_row + 11});
  SetWindowPos(Label5.handle(), nullptr, label.left, label.top, label.right - label.left,
               label.bottom - label.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

RECT frmDate::units(RECT area) const {
  MapDialogRect(handle(), &area);
  return area;
}

}  // namespace tallowmere
