#pragma once

#include <string>
#include <string_view>

#include "engine/search_criteria.h"

namespace tallowmere {

/// Returns the six fields of the current criteria that a HyperFind sets aside.
CriteriaInput current_criteria(const SearchCriteria& search);

/// HyperFind searches the viewed file for the text selected in it without losing the user's own
/// criteria. This class knows which criteria are current, which are kept, and what the buttons do.
///
/// A run of the Search button makes its criteria the user's; the first HyperFind or Restore after
/// it sets them aside.
class HyperFind {
 public:
  enum State {
    none = 0,           ///< no HyperFind done yet
    hyper_current = 1,  ///< the criteria of the last HyperFind are current
    user_restored = 2   ///< the user's criteria are current again
  };

  State hyper_state() const { return hyper_state_; }

  /// Notes that a run of the Search button has loaded the user's criteria.
  void user_searched();

  /// Handles cmdHyper with selected text (UTF-8): returns the criteria that replace `current`.
  CriteriaInput find(std::string selected_text, const CriteriaInput& current);

  /// Handles cmdRestore: returns the user's criteria, or those of the last HyperFind when the
  /// user's are current.
  CriteriaInput restore(const CriteriaInput& current);

  // What the buttons show; `text_selected`: the user has selected text to search for.
  bool restores_hyper(bool text_selected) const {
    return hyper_state_ == user_restored && !text_selected;
  }
  std::string_view caption(bool text_selected) const;
  std::string_view tool_tip(bool text_selected) const;

 private:
  void save_current(const CriteriaInput& current);

  CriteriaInput find_slot_;   ///< the user's own criteria, while a HyperFind is in force
  CriteriaInput hyper_slot_;  ///< of the last HyperFind
  State hyper_state_ = none;
  bool find_saved_pending_ = true;  ///< the current criteria are the user's, not yet saved
};

}  // namespace tallowmere
