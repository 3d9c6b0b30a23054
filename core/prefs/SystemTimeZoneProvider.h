#pragma once

#include <memory>

#include "clock/TimeZoneProvider.h"
#include "prefs/SystemTimeZone.h"

namespace wakeloft {

// The zone the user has set, as the system tells it now. The re-check
// notifier has the system read it anew when it changes.
class SystemTimeZoneProvider final : public TimeZoneProvider {
 public:
  std::shared_ptr<const TimeZone> current() const override {
    return std::make_shared<const SystemTimeZone>(SystemTimeZone::current());
  }
};

}  // namespace wakeloft
