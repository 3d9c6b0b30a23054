#pragma once

#include <optional>

#include "lid/MachineConditionsSnapshot.h"

namespace wakeloft {

// The machine as Deepwake sees it: power source, displays, battery charge,
// Low Power Mode, heat and the lid. Main thread only.
class MachineConditions {
 public:
  virtual ~MachineConditions() = default;

  virtual bool isOnBattery() const = 0;
  virtual bool hasExternalDisplay() const = 0;
  virtual std::optional<int> batteryCharge() const = 0;
  virtual bool isLowPowerModeOn() const = 0;
  virtual ThermalState thermalState() const = 0;
  virtual std::optional<bool> isLidClosed() const = 0;

  MachineConditionsSnapshot snapshot() const {
    MachineConditionsSnapshot snapshot;
    snapshot.isOnBattery = isOnBattery();
    snapshot.hasExternalDisplay = hasExternalDisplay();
    snapshot.batteryCharge = batteryCharge();
    snapshot.isLowPowerModeOn = isLowPowerModeOn();
    snapshot.thermalState = thermalState();
    snapshot.isLidClosed = isLidClosed();
    return snapshot;
  }
};

}  // namespace wakeloft
