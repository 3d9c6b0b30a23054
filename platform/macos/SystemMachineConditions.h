#pragma once

#include "lid/MachineConditions.h"

namespace wakeloft {

// The live machine, read afresh on every call: IOKit's providing power
// source and internal battery, CoreGraphics' online display list, the
// process information's Low Power Mode and thermal state, and the root power
// domain's clamshell state.
class SystemMachineConditions final : public MachineConditions {
 public:
  bool isOnBattery() const override;
  bool hasExternalDisplay() const override;
  std::optional<int> batteryCharge() const override;
  bool isLowPowerModeOn() const override;
  ThermalState thermalState() const override;
  std::optional<bool> isLidClosed() const override;
};

}  // namespace wakeloft
