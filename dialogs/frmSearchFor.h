#pragma once

#include <array>
#include <memory>
#include <string>

#include "dialogs/dialog_context.h"
#include "dialogs/frmDate.h"
#include "dialogs/frmHints.h"
#include "dialogs/frmPath.h"
#include "dialogs/frmProximity.h"
#include "dialogs/recent_drop_down.h"
#include "dialogs/summary_bar.h"
#include "engine/search_criteria.h"
#include "shell/recent_searches.h"
#include "shell/search_kind.h"
#include "win32/controls.h"
#include "win32/form.h"

namespace tallowmere {

/// Asks what to search for. Opens the dialogs for where, dates and proximity, and owns them.
class frmSearchFor : public win32::Form {
 public:
  frmSearchFor(HWND owner, const DialogContext& context, RecentSearches& recent_searches);

  /// Fills the dialog from the search and shows it; true on Begin.
  bool ask(SearchKind kind);
  /// What the dialog and the proximity dialog hold now.
  CriteriaInput input() const;
  /// Fills this dialog and the proximity dialog from the search, whose proximity it may correct.
  void copy_current_to_dlgbox();

  bool pre_translate(MSG& message) override;

  win32::Label Label1, Label2;
  win32::TextBox txtSearchFor;
  std::array<win32::OptionButton, 4> Option1;
  win32::CheckBox Check1;
  win32::Button cmdWhere, cmdDates, cmdProximity;
  win32::Button cmdPaste, cmdBegin, cmdCancel, cmdHelp;
  SummaryBar StatusBar1;

  frmProximity& proximity() { return proximity_; }
  /// Created on first use, like date() and hints().
  frmPath& path();
  frmDate& date();
  frmHints& hints();
  const RecentDropDown& recent() const { return recent_; }

 protected:
  void on_shown() override { Form_Activate(); }
  bool on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  void on_dpi_changed(int before, int now) override;

 private:
  void find_controls();
  void wire();
  /// Fills in the words; corrects the proximity of `search` where its dialog cannot have it.
  void show_words(SearchCriteria& search);
  void choose_recent(SearchCriteria chosen);
  void Form_Activate();
  void set_prox_button();
  void cmdWhere_Click();
  void cmdDates_Click();
  void cmdProximity_Click();
  void cmdPaste_click();
  void cmdHelp_Click();
  void cmdBegin_Click();
  void cmdCancel_Click();
  void display_panel_date();
  void size_panels();

  HWND owner_;
  DialogContext context_;
  SearchKind kind_ = SearchKind::new_search;  ///< of the search that is asked for
  RecentChoice recent_choice_;
  RecentDropDown recent_;
  bool left_out_shown_ = false;  ///< in a panel of the summary of its own
  frmProximity proximity_;       ///< holds the proximity values, so it always exists
  std::unique_ptr<frmPath> path_;
  std::unique_ptr<frmDate> date_;
  std::unique_ptr<frmHints> hints_;
};

}  // namespace tallowmere
