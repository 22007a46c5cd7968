#include "viewer/hit_ordinal.h"

#include <utility>

#include "viewer/hit_counter.h"

namespace tallowmere {

// What a step shows is used until the place has been counted.
void HitOrdinal::met(const Place& place, const HitNavigation::StepMade& step, bool from_last,
                     const HitCounter* counter) {
  const Place before = std::exchange(place_, place);
  const std::int64_t ordinal = std::exchange(ordinal_, 0);
  met_ = true;
  total_ = 0;
  if (step.forward && (step.fresh || step.wrapped)) {
    ordinal_ = 1;
  } else if (from_last && ordinal > 0 && !step.wrapped) {
    // A hit at the seam of two chunks may be reached twice.
    const bool same = place.start == before.start;
    ordinal_ = same ? ordinal : ordinal + (step.forward ? 1 : -1);
  }
  if (counter != nullptr) counted(*counter);
}

void HitOrdinal::counted(const HitCounter& counter) {
  if (!met_) return;
  const std::int64_t known = counter.ordinal(place_.start);
  if (known > 0 || counter.complete()) ordinal_ = known;
  total_ = counter.complete() ? counter.total() : 0;
}

std::string HitOrdinal::text() const {
  if (!met_ || ordinal_ <= 0) return {};
  const std::string text = "hit " + std::to_string(ordinal_);
  return total_ > 0 ? text + " of " + std::to_string(total_) : text;
}

}  // namespace tallowmere
