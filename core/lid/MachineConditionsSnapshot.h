#pragma once

#include <optional>

#include "lid/ThermalState.h"

namespace wakeloft {

// The facts about the machine that Deepwake watches, read together: whether
// a closed lid can shed heat, and what its guardrails look at.
struct MachineConditionsSnapshot {
  bool isOnBattery = false;
  bool hasExternalDisplay = false;
  // Percent; absent on a machine without a battery or when unreadable.
  std::optional<int> batteryCharge = std::nullopt;
  bool isLowPowerModeOn = false;
  ThermalState thermalState = ThermalState::nominal;
  // Absent when the lid cannot be read (or there is none).
  std::optional<bool> isLidClosed = std::nullopt;

  // On battery with nothing but the built-in display: with the lid closed the
  // heat has nowhere to go.
  constexpr bool hasNoHeatPath() const { return isOnBattery && !hasExternalDisplay; }

  friend constexpr bool operator==(const MachineConditionsSnapshot&, const MachineConditionsSnapshot&) = default;
};

}  // namespace wakeloft
