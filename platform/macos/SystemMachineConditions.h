#pragma once

#include "lid/MachineConditions.h"

namespace wakeloft {

// The live machine: IOKit's providing power source and CoreGraphics' online
// display list, read afresh on every call.
class SystemMachineConditions final : public MachineConditions {
 public:
  bool isOnBattery() const override;
  bool hasExternalDisplay() const override;
};

}  // namespace wakeloft
