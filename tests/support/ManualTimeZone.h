#pragma once

#include <memory>
#include <utility>

#include "clock/TimeZoneProvider.h"

namespace wakeloft::testing {

// The user's zone, set by the test.
struct ManualTimeZoneProvider final : TimeZoneProvider {
  explicit ManualTimeZoneProvider(std::shared_ptr<const TimeZone> initial) : zone(std::move(initial)) {}
  std::shared_ptr<const TimeZone> zone;
  std::shared_ptr<const TimeZone> current() const override { return zone; }
};

}  // namespace wakeloft::testing
