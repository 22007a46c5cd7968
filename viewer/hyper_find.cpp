#include "viewer/hyper_find.h"

#include <utility>

namespace tallowmere {

namespace {

constexpr int hyper_range = 110;

}  // namespace

CriteriaInput current_criteria(const SearchCriteria& search) {
  CriteriaInput input;
  input.criteria = search.criteria;
  input.search_type = search.search_type;
  input.match_case = search.match_case;
  input.prox_before = search.prox_before;
  input.prox_after = search.prox_after;
  input.prox_all = search.prox_all;
  return input;
}

void HyperFind::user_searched() {
  find_saved_pending_ = true;
  if (hyper_state_ != none) hyper_state_ = user_restored;
}

CriteriaInput HyperFind::find(std::string selected_text, const CriteriaInput& current) {
  if (find_saved_pending_ && current.criteria.empty() && hyper_state_ == user_restored) {
    // Going back to no criteria at all is of no use; going back to the HyperFind before is.
    find_slot_ = hyper_slot_;
    find_saved_pending_ = false;
  } else {
    save_current(current);
  }
  hyper_slot_ = {std::move(selected_text), search_phrase, false, hyper_range, hyper_range, false};
  hyper_state_ = hyper_current;
  return hyper_slot_;
}

CriteriaInput HyperFind::restore(const CriteriaInput& current) {
  if (hyper_state_ == hyper_current) {
    hyper_state_ = user_restored;
    return find_slot_;
  }
  save_current(current);
  hyper_state_ = hyper_current;
  return hyper_slot_;
}

void HyperFind::save_current(const CriteriaInput& current) {
  if (!find_saved_pending_) return;
  find_slot_ = current;
  find_saved_pending_ = false;
}

std::string_view HyperFind::caption(bool text_selected) const {
  return restores_hyper(text_selected) ? "Restore Hyper" : "HyperFind";
}

std::string_view HyperFind::tool_tip(bool text_selected) const {
  return restores_hyper(text_selected) ? "Redo Last HyperFind" : "Find Selected Text";
}

}  // namespace tallowmere
