#include "lid/DeepwakeGuardrails.h"

namespace wakeloft {

namespace {

bool atOrBelowFloor(const DeepwakeGuardrails::Settings& settings, const MachineConditionsSnapshot& now) {
  // Charging is not on battery: a charge below the floor that is rising
  // does not stop Deepwake.
  return settings.batteryFloor > 0 && now.isOnBattery && now.batteryCharge && *now.batteryCharge <= settings.batteryFloor;
}

}  // namespace

std::optional<DeepwakeGuardrails::Stop> DeepwakeGuardrails::holding(const Settings& settings,
                                                                    const MachineConditionsSnapshot& now) {
  // Heat first: it is the one that can harm the machine.
  if (now.thermalState == ThermalState::critical) return Stop{Stop::Rule::criticalHeat};
  if (settings.stopsInLowPowerMode && now.isLowPowerModeOn) return Stop{Stop::Rule::lowPowerMode};
  if (atOrBelowFloor(settings, now)) return Stop{Stop::Rule::batteryFloor, settings.batteryFloor};
  return std::nullopt;
}

std::optional<DeepwakeGuardrails::Stop> DeepwakeGuardrails::stopping(const Settings& settings,
                                                                     const MachineConditionsSnapshot& before,
                                                                     const MachineConditionsSnapshot& now) {
  // Paused for power, no lease is held and nothing needs stopping: the rules
  // are judged again when power returns.
  if (!pausesForPower(settings, now)) {
    if (auto stop = holding(settings, now)) return stop;
  }
  if (settings.stopsWhenLidOpens && before.isLidClosed == true && now.isLidClosed == false) {
    return Stop{Stop::Rule::lidOpened};
  }
  return std::nullopt;
}

bool DeepwakeGuardrails::pausesForPower(const Settings& settings, const MachineConditionsSnapshot& now) {
  return settings.onlyOnPowerAdapter && now.isOnBattery;
}

DeepwakeGuardrails::Notice DeepwakeGuardrails::notice(const Settings& settings, const MachineConditionsSnapshot& now,
                                                      bool isPausedForPower) {
  if (isPausedForPower) return Notice::pausedForPower;
  if (now.thermalState == ThermalState::serious) return Notice::seriousHeat;
  if (settings.batteryFloor > 0 && now.isOnBattery && now.batteryCharge) return Notice::batteryAboveFloor;
  return Notice::none;
}

}  // namespace wakeloft
