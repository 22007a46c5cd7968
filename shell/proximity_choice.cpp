#include "shell/proximity_choice.h"

#include <algorithm>

namespace tallowmere {

void ProximityChoice::ini_frmProximity(bool prox_all, int& prox_before, int& prox_after) {
  prox_before = std::clamp(prox_before, proximity_min, proximity_max);
  prox_after = std::clamp(prox_after, proximity_min, proximity_max);
  if (prox_before == 0 && prox_after == 0) {
    prox_before = proximity_default;
    prox_after = proximity_default;
  }
  before = prox_before;
  after = prox_after;
  all_words = prox_all;
}

void ProximityChoice::remember() {
  remembered_before_ = before;
  remembered_after_ = after;
  remembered_all_words_ = all_words;
}

void ProximityChoice::restore() {
  before = remembered_before_;
  after = remembered_after_;
  all_words = remembered_all_words_;
}

void ProximityChoice::reset() {
  before = proximity_default;
  after = proximity_default;
}

std::string_view ProximityChoice::explanation() const {
  return all_words ? "that follow it also match within the range set above."
                   : "that follows it also matches within the range set above.";
}

}  // namespace tallowmere
