#pragma once

#include <memory>

#include "prefs/TimeZone.h"

namespace wakeloft {

// The zone the user has set, read anew each time: it may change while the
// app runs.
class TimeZoneProvider {
 public:
  virtual ~TimeZoneProvider() = default;
  virtual std::shared_ptr<const TimeZone> current() const = 0;
};

}  // namespace wakeloft
