#pragma once

#include <cstdint>
#include <string>

#include "viewer/hit_navigation.h"

namespace tallowmere {

class HitCounter;

/// Which of the file's hits the user has met by Find Next or Find Prev, as far as it is known.
class HitOrdinal {
 public:
  /// Where the selection lies in the file; of length 0 without one.
  struct Place {
    std::int64_t start = 0;
    std::int64_t end = 0;
    bool operator==(const Place&) const = default;
  };

  /// True while the selection is still the hit met last.
  bool at(const Place& selection) const { return met_ && place_ == selection; }
  /// A step has stopped here. `from_last`: it began at the hit met before.
  void met(const Place& place, const HitNavigation::StepMade& step, bool from_last,
           const HitCounter* counter);
  /// The selection is here now: elsewhere, there is nothing to say.
  void selection_moved(const Place& selection) {
    if (!at(selection)) forget();
  }
  void forget() { met_ = false; }
  bool met() const { return met_; }

  /// The count, if there is one, has gone on.
  void counted(const HitCounter& counter);

  /// "hit 3 of 17", "hit 3" without a total; empty while it is not known.
  std::string text() const;

 private:
  bool met_ = false;
  Place place_;
  std::int64_t ordinal_ = 0;  ///< 0: not known
  std::int64_t total_ = 0;    ///< likewise
};

}  // namespace tallowmere
