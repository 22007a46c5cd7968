#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "engine/date_time.h"
#include "engine/search_criteria.h"
#include "shell/recent_searches.h"
#include "win32/controls.h"
#include "win32/form.h"
#include "win32/tooltip.h"

namespace tallowmere {

/// The list of recent searches that drops down below a text box, and the button beside the box that
/// opens it; so do F4 and Alt+Down in both. While the list shows it has the focus: it closes when
/// that goes elsewhere, and Esc, Enter and a click in it leave the focus to the text box.
class RecentDropDown {
 public:
  using ShortDate = std::function<std::string(const Date&)>;
  using Chosen = std::function<void(const SearchCriteria&)>;

  /// The form has the controls, the list above all others. `chosen` gets what the user chooses.
  RecentDropDown(win32::Form& form, int text_box, RecentSearches& searches, ShortDate short_date,
                 Chosen chosen);

  win32::Button cmdRecent;
  win32::ListBox lstRecent;

  /// The form hands on its messages; returns true when this one needs nothing more.
  bool pre_translate(MSG& message);
  bool is_open() const { return lstRecent.visible(); }
  void close() const;
  /// Enables the button while there are searches to choose from.
  void refresh_button() const;
  /// Fits the controls to another DPI.
  void fit() const;

 private:
  void open();
  void place() const;
  void fill(int selected);
  bool pre_translate_open(MSG& message);
  bool key_down(WPARAM key);
  void mouse_moved(const MSG& message);
  void point_at(int row);
  int row_at(LPARAM position) const;
  void choose(int row);
  void remove(int row);
  LRESULT draw_button(const NMCUSTOMDRAW& draw) const;

  win32::Form& form_;
  win32::TextBox text_box_;
  RecentSearches& searches_;
  ShortDate short_date_;
  Chosen chosen_;
  win32::ToolTip tips_;
  POINT pointer_{};  ///< where the mouse was when it was last seen
};

}  // namespace tallowmere
