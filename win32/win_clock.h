#pragma once

#include "engine/date_time.h"

namespace tallowmere::win32 {

/// The system's clock and the user's time zone.
class WinClock : public Clock {
 public:
  double seconds_since_midnight() const override;
  Date today() const override;
  DateTime to_local(Ticks moment) const override;
  Ticks start_of_day(const Date& day) const override;
};

}  // namespace tallowmere::win32
