#pragma once

namespace wakeloft {

// The two facts about the machine that decide whether a closed lid can shed
// heat, read together.
struct MachineConditionsSnapshot {
  bool isOnBattery = false;
  bool hasExternalDisplay = false;

  // On battery with nothing but the built-in display: with the lid closed the
  // heat has nowhere to go.
  constexpr bool hasNoHeatPath() const { return isOnBattery && !hasExternalDisplay; }

  friend constexpr bool operator==(const MachineConditionsSnapshot&, const MachineConditionsSnapshot&) = default;
};

}  // namespace wakeloft
