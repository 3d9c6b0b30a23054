#pragma once

#include "lid/MachineConditions.h"

namespace wakeloft {

// Fixed conditions, for previews and tests.
class StaticMachineConditions final : public MachineConditions {
 public:
  explicit StaticMachineConditions(MachineConditionsSnapshot conditions) : conditions_(conditions) {}
  StaticMachineConditions(bool isOnBattery, bool hasExternalDisplay)
      : conditions_{.isOnBattery = isOnBattery, .hasExternalDisplay = hasExternalDisplay} {}

  bool isOnBattery() const override { return conditions_.isOnBattery; }
  bool hasExternalDisplay() const override { return conditions_.hasExternalDisplay; }
  std::optional<int> batteryCharge() const override { return conditions_.batteryCharge; }
  bool isLowPowerModeOn() const override { return conditions_.isLowPowerModeOn; }
  ThermalState thermalState() const override { return conditions_.thermalState; }
  std::optional<bool> isLidClosed() const override { return conditions_.isLidClosed; }

 private:
  MachineConditionsSnapshot conditions_;
};

}  // namespace wakeloft
