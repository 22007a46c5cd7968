#pragma once

#include "engine/date_time.h"

namespace tallowmere {

/// The system's clock and time zone through the C library.
class PosixClock : public Clock {
 public:
  double seconds_since_midnight() const override;
  Date today() const override;
  DateTime to_local(Ticks moment) const override;
  Ticks start_of_day(const Date& day) const override;
};

}  // namespace tallowmere
