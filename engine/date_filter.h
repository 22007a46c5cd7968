#pragma once

#include "engine/search_criteria.h"

namespace tallowmere {

/// The date limits of a search as one span of time, computed once before the run.
class DateFilter {
 public:
  DateFilter(const SearchCriteria& search, const Clock& clock);

  /// False when every date is accepted, so that no date has to be asked for.
  bool limits() const { return limits_; }

  bool file_in_date_range(Ticks modified) const {
    return !limits_ || (modified >= from_ && modified < to_);
  }

 private:
  bool limits_ = true;
  Ticks from_ = 0;
  Ticks to_ = 0;  ///< equal to from_: no date is accepted
};

}  // namespace tallowmere
