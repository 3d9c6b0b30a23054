#pragma once

#include <array>
#include <optional>

#include "lid/MachineConditionsSnapshot.h"

namespace wakeloft {

// The rules that end or pause Deepwake before a closed laptop runs flat,
// runs hot or is taken out of the bag: a battery floor, Low Power Mode,
// critical heat, the lid opening, and running only on a power adapter. Each
// judges the machine conditions under the user's settings; the lid awake
// controller applies them.
class DeepwakeGuardrails {
 public:
  // The user's choices, from the Safety popover.
  struct Settings {
    // The floors that may be chosen, in percent; 0 is off.
    static constexpr std::array<int, 5> batteryFloors{0, 10, 20, 30, 50};

    int batteryFloor = 20;
    bool stopsInLowPowerMode = true;
    bool stopsWhenLidOpens = false;
    bool onlyOnPowerAdapter = false;

    static constexpr bool isBatteryFloor(long long percent) {
      for (const int floor : batteryFloors) {
        if (floor == percent) return true;
      }
      return false;
    }
    friend constexpr bool operator==(const Settings&, const Settings&) = default;
  };

  // The settings a configuration profile sets, which the user cannot change.
  struct Forced {
    bool batteryFloor = false;
    bool stopsInLowPowerMode = false;
    bool stopsWhenLidOpens = false;
    bool onlyOnPowerAdapter = false;

    // `wanted`, with what is forced kept as it is in `current`.
    Settings applied(Settings wanted, const Settings& current) const {
      if (batteryFloor) wanted.batteryFloor = current.batteryFloor;
      if (stopsInLowPowerMode) wanted.stopsInLowPowerMode = current.stopsInLowPowerMode;
      if (stopsWhenLidOpens) wanted.stopsWhenLidOpens = current.stopsWhenLidOpens;
      if (onlyOnPowerAdapter) wanted.onlyOnPowerAdapter = current.onlyOnPowerAdapter;
      return wanted;
    }
    friend constexpr bool operator==(const Forced&, const Forced&) = default;
  };

  // Why a rule ended Deepwake, or keeps it from being turned on.
  struct Stop {
    enum class Rule { batteryFloor, lowPowerMode, criticalHeat, lidOpened };
    Rule rule;
    // The floor it stopped at, for the battery rule.
    int batteryFloor = 0;
    // Refused when the user turned Deepwake on, rather than ended while on.
    bool whenTurningOn = false;
    friend constexpr bool operator==(const Stop&, const Stop&) = default;
  };

  // What the Deepwake block says of the guardrails while Deepwake is wanted.
  enum class Notice { none, batteryAboveFloor, pausedForPower, seriousHeat };

  // The rule that keeps Deepwake from running in these conditions, whatever
  // came before: critical heat, then Low Power Mode, then the battery floor.
  static std::optional<Stop> holding(const Settings& settings, const MachineConditionsSnapshot& now);
  // The rule that ends a wanted Deepwake as the conditions change from
  // `before` to `now`: one that holds now, unless Deepwake pauses for power
  // now, or the lid going from closed to open.
  static std::optional<Stop> stopping(const Settings& settings, const MachineConditionsSnapshot& before,
                                      const MachineConditionsSnapshot& now);
  // On battery under "only on a power adapter": the lease is given back
  // until power returns, the user's intent staying on.
  static bool pausesForPower(const Settings& settings, const MachineConditionsSnapshot& now);
  // The one notice the block shows: the pause, else serious heat, else the
  // charge and the floor while on battery with a floor set.
  static Notice notice(const Settings& settings, const MachineConditionsSnapshot& now, bool isPausedForPower);
};

}  // namespace wakeloft
