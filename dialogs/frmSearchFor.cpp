#include "dialogs/frmSearchFor.h"

#include <algorithm>

#include "dialogs/option_group.h"
#include "dialogs/resource.h"
#include "shell/search_summary.h"
#include "win32/clipboard.h"
#include "win32/text.h"

namespace tallowmere {
namespace {

enum Panel : int { types_panel, folder_panel, dates_panel, left_out_panel };

/// As much of `text` as `room` characters of the system take, without half a surrogate pair.
std::string cut_to(const std::string& text, int room) {
  std::wstring units = win32::wide(text);
  if (units.size() <= static_cast<std::size_t>(room)) return text;
  units.resize(static_cast<std::size_t>(room));
  if (!units.empty() && IS_HIGH_SURROGATE(units.back())) units.pop_back();
  return win32::narrow(units);
}

}  // namespace

frmSearchFor::frmSearchFor(HWND owner, const DialogContext& context,
                           RecentSearches& recent_searches)
    : Form(IDD_SEARCH_FOR, owner),
      owner_(owner),
      context_(context),
      recent_(*this, IDC_SEARCH_TEXT, recent_searches, context.short_date,
              [this](const SearchCriteria& chosen) { choose_recent(chosen); }),
      proximity_(handle()) {
  find_controls();
  wire();
  txtSearchFor.set_limit(criteria_limit);
  size_panels();
}

void frmSearchFor::find_controls() {
  Label1 = win32::Label(item(IDC_SEARCH_LABEL1));
  Label2 = win32::Label(item(IDC_SEARCH_LABEL2));
  txtSearchFor = win32::TextBox(item(IDC_SEARCH_TEXT));
  for (int i = 0; i < 4; ++i) Option1[i] = win32::OptionButton(item(IDC_SEARCH_OPTION + i));
  Check1 = win32::CheckBox(item(IDC_SEARCH_CHECK1));
  cmdWhere = win32::Button(item(IDC_SEARCH_WHERE));
  cmdDates = win32::Button(item(IDC_SEARCH_DATES));
  cmdProximity = win32::Button(item(IDC_SEARCH_PROXIMITY));
  cmdPaste = win32::Button(item(IDC_SEARCH_PASTE));
  cmdBegin = win32::Button(item(IDOK));
  cmdCancel = win32::Button(item(IDCANCEL));
  cmdHelp = win32::Button(item(IDC_SEARCH_HELP));
  StatusBar1.attach(item(IDC_SEARCH_STATUS), folder_panel);
}

void frmSearchFor::wire() {
  for (int i = 0; i < 4; ++i) {
    for (const int code : {BN_CLICKED, BN_DOUBLECLICKED, BN_SETFOCUS}) {
      command(IDC_SEARCH_OPTION + i, code, [this] { set_prox_button(); });
    }
  }
  clicked(IDC_SEARCH_WHERE, [this] { cmdWhere_Click(); });
  clicked(IDC_SEARCH_DATES, [this] { cmdDates_Click(); });
  clicked(IDC_SEARCH_PROXIMITY, [this] { cmdProximity_Click(); });
  clicked(IDC_SEARCH_PASTE, [this] { cmdPaste_click(); });
  clicked(IDC_SEARCH_HELP, [this] { cmdHelp_Click(); });
  clicked(IDOK, [this] { cmdBegin_Click(); });
  clicked(IDCANCEL, [this] { cmdCancel_Click(); });
}

bool frmSearchFor::ask(SearchKind kind) {
  kind_ = kind;
  recent_choice_ = {};
  copy_current_to_dlgbox();
  display_panel_date();
  SetWindowTextW(handle(), win32::wide(criteria_caption(kind)).c_str());
  cmdWhere.enable(where_enabled(kind));
  cmdDates.enable(dates_enabled(kind));
  recent_.refresh_button();
  context_.cancelled = true;
  show_modal(owner_);
  if (context_.cancelled) recent_choice_.take_back(context_.search);
  return !context_.cancelled;
}

void frmSearchFor::copy_current_to_dlgbox() {
  show_words(context_.search);
}

void frmSearchFor::show_words(SearchCriteria& search) {
  txtSearchFor.set_text(search.criteria);
  select_option(Option1, search.search_type);
  Check1.set_checked(search.match_case);
  proximity_.ini_frmProximity(search.prox_all, search.prox_before, search.prox_after);
  set_prox_button();
}

/// Fills in the search chosen: all of it for a new search, only the words for the other kinds.
void frmSearchFor::choose_recent(SearchCriteria chosen) {
  show_words(chosen);
  txtSearchFor.select_all();
  if (kind_ != SearchKind::new_search) return;
  for (std::size_t slot = 1; slot < chosen.user_types.size(); ++slot) {
    chosen.type_descriptions[slot] = context_.type_description(chosen.user_types[slot]);
  }
  recent_choice_.choose(chosen, context_.search);
  display_panel_date();
}

CriteriaInput frmSearchFor::input() const {
  CriteriaInput input;
  input.criteria = txtSearchFor.text();
  input.search_type = selected_option(Option1, search_phrase);
  input.match_case = Check1.checked();
  input.prox_before = proximity_.prox_before();
  input.prox_after = proximity_.prox_after();
  input.prox_all = proximity_.prox_all();
  return input;
}

void frmSearchFor::Form_Activate() {
  set_prox_button();
  txtSearchFor.focus();
  // The pointer of a link in the hints, left behind when a dialog opened over it.
  if (GetCursor() == LoadCursorW(nullptr, IDC_UPARROW)) SetCursor(LoadCursorW(nullptr, IDC_ARROW));
}

void frmSearchFor::set_prox_button() {
  cmdProximity.enable(Option1[search_near].selected());
}

frmPath& frmSearchFor::path() {
  if (!path_) {
    path_ = std::make_unique<frmPath>(handle(), context_, [this] { display_panel_date(); });
  }
  return *path_;
}

frmDate& frmSearchFor::date() {
  if (!date_) {
    date_ = std::make_unique<frmDate>(handle(), context_, [this] { display_panel_date(); });
  }
  return *date_;
}

frmHints& frmSearchFor::hints() {
  if (!hints_) hints_ = std::make_unique<frmHints>(handle());
  return *hints_;
}

void frmSearchFor::cmdWhere_Click() {
  path().show(handle(), owner_);
  Form_Activate();
}

void frmSearchFor::cmdDates_Click() {
  date().show(handle(), owner_);
  Form_Activate();
}

void frmSearchFor::cmdProximity_Click() {
  proximity_.show(handle(), owner_);
  Form_Activate();
}

void frmSearchFor::cmdPaste_click() {
  const std::string text = win32::clipboard_text(handle()).value_or("");
  if (!text.empty()) {
    const int kept = GetWindowTextLengthW(txtSearchFor.handle()) - txtSearchFor.selection_length();
    const int start = txtSearchFor.selection_start();
    txtSearchFor.replace_selection(cut_to(text, std::max(0, criteria_limit - kept)));
    select_option(Option1, search_phrase);
    set_prox_button();
    txtSearchFor.focus();
    txtSearchFor.select(start, txtSearchFor.selection_start());
  }
  txtSearchFor.focus();
}

void frmSearchFor::cmdHelp_Click() {
  recent_.close();
  hints().show(handle(), owner_);
}

bool frmSearchFor::pre_translate(MSG& message) {
  if (recent_.pre_translate(message)) return true;
  if (message.message != WM_KEYUP || message.wParam != VK_F1) return false;
  cmdHelp_Click();
  return true;
}

void frmSearchFor::cmdBegin_Click() {
  hide_from(cmdBegin.handle());
  context_.cancelled = false;
}

void frmSearchFor::cmdCancel_Click() {
  hide_from(cmdBegin.handle());
  context_.cancelled = true;
}

void frmSearchFor::display_panel_date() {
  const SearchSummary summary =
      tallowmere::display_panel_date(context_.search, context_.short_date);
  left_out_shown_ = !summary.left_out.empty();
  size_panels();
  StatusBar1.set_part(types_panel, summary.file_types);
  StatusBar1.set_part(folder_panel, summary.where);
  StatusBar1.set_part(dates_panel, summary.dates);
  if (left_out_shown_) StatusBar1.set_part(left_out_panel, summary.left_out);
}

void frmSearchFor::size_panels() {
  RECT client;
  GetClientRect(handle(), &client);
  const int width = static_cast<int>(client.right);
  const int three[] = {width * 27 / 100, width * 70 / 100, -1};
  const int four[] = {width * 20 / 100, width * 50 / 100, width * 75 / 100, -1};
  SendMessageW(StatusBar1.handle(), SB_SETPARTS, left_out_shown_ ? 4 : 3,
               reinterpret_cast<LPARAM>(left_out_shown_ ? four : three));
}

bool frmSearchFor::on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT&) {
  if (message != WM_SIZE) return false;
  if (StatusBar1.handle() != nullptr) {
    SendMessageW(StatusBar1.handle(), WM_SIZE, wparam, lparam);
    size_panels();
  }
  return false;
}

/// Sizes the status bar again, whose font may have changed after its size.
void frmSearchFor::on_dpi_changed(int, int) {
  recent_.fit();
  SendMessageW(StatusBar1.handle(), WM_SIZE, SIZE_RESTORED, 0);
  size_panels();
}

}  // namespace tallowmere
