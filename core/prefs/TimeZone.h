#pragma once

#include "base/Date.h"

namespace wakeloft {

// A time zone with its rules: how far its clocks are from UTC at a given
// instant, daylight saving time included.
class TimeZone {
 public:
  virtual ~TimeZone() = default;
  virtual int secondsFromGMT(Date date) const = 0;
};

}  // namespace wakeloft
