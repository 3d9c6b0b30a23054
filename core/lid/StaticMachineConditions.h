#pragma once

#include "lid/MachineConditions.h"

namespace wakeloft {

// Fixed conditions, for previews and tests.
class StaticMachineConditions final : public MachineConditions {
 public:
  StaticMachineConditions(bool isOnBattery, bool hasExternalDisplay)
      : isOnBattery_(isOnBattery), hasExternalDisplay_(hasExternalDisplay) {}

  bool isOnBattery() const override { return isOnBattery_; }
  bool hasExternalDisplay() const override { return hasExternalDisplay_; }

 private:
  bool isOnBattery_;
  bool hasExternalDisplay_;
};

}  // namespace wakeloft
