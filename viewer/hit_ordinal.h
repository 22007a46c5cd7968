#pragma once

#include <cstdint>
#include <string>

#include "viewer/hit_navigation.h"

namespace tallowmere {

class HitCounter;

/// Which of the file's hits the user has reached by Find Next or Find Prev, as far as it is known.
class HitOrdinal {
 public:
  /// Where the selection is in the file; of length 0 without one.
  struct Place {
    std::int64_t start = 0;
    std::int64_t end = 0;
    bool operator==(const Place&) const = default;
  };

  /// True while the selection is still the hit reached last.
  bool at(const Place& selection) const { return met_ && place_ == selection; }
  /// Notes that a step has stopped at `place`. `from_last`: it began at the hit reached before.
  /// `counter` may be null.
  void met(const Place& place, const HitNavigation::StepMade& step, bool from_last,
           const HitCounter* counter);
  /// Notes where the selection is now; away from the hit, there is nothing to report.
  void selection_moved(const Place& selection) {
    if (!at(selection)) forget();
  }
  void forget() { met_ = false; }
  bool met() const { return met_; }

  /// Notes that the count has gone on.
  void counted(const HitCounter& counter);

  /// Returns "hit 3 of 17", or "hit 3" without a total; empty while it is not known.
  std::string text() const;

 private:
  bool met_ = false;
  Place place_;
  std::int64_t ordinal_ = 0;  ///< 0: not known
  std::int64_t total_ = 0;    ///< likewise
};

}  // namespace tallowmere
