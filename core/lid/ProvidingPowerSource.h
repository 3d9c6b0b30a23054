#pragma once

#include <optional>
#include <string_view>

namespace wakeloft {

// The power source the Mac draws from, by the type name IOKit gives it.
struct ProvidingPowerSource {
  // IOKit's kIOPMBatteryPowerKey.
  static constexpr std::string_view batteryPowerType = "Battery Power";

  // `type` is absent when the system had no power information at all; that
  // counts as not on battery, as do AC power and an uninterruptible supply.
  static constexpr bool isBattery(std::optional<std::string_view> type) { return type == batteryPowerType; }
};

}  // namespace wakeloft
