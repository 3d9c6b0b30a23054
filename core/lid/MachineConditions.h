#pragma once

#include "lid/MachineConditionsSnapshot.h"

namespace wakeloft {

// Whether the machine runs on battery and whether a display other than the
// built-in one is online. Main thread only.
class MachineConditions {
 public:
  virtual ~MachineConditions() = default;

  virtual bool isOnBattery() const = 0;
  virtual bool hasExternalDisplay() const = 0;

  MachineConditionsSnapshot snapshot() const {
    MachineConditionsSnapshot snapshot;
    snapshot.isOnBattery = isOnBattery();
    snapshot.hasExternalDisplay = hasExternalDisplay();
    return snapshot;
  }
};

}  // namespace wakeloft
