#include "lid/UserDefaultsDeepwakeGuardrailStore.h"

#include <algorithm>
#include <cmath>

namespace wakeloft {

DeepwakeGuardrails::Settings UserDefaultsDeepwakeGuardrailStore::settings() {
  DeepwakeGuardrails::Settings settings;
  if (const auto value = defaults_.object(batteryFloorKey)) {
    // Booleans are not numbers here, whatever the platform's bridging says.
    const auto number = value->number();
    if (number && std::trunc(*number) == *number && DeepwakeGuardrails::Settings::isBatteryFloor(
                                                         static_cast<long long>(std::clamp(*number, -1.0, 101.0)))) {
      settings.batteryFloor = static_cast<int>(*number);
    } else {
      defaults_.remove(batteryFloorKey);
    }
  }
  settings.stopsInLowPowerMode = readSwitch(stopsInLowPowerModeKey, settings.stopsInLowPowerMode);
  settings.stopsWhenLidOpens = readSwitch(stopsWhenLidOpensKey, settings.stopsWhenLidOpens);
  settings.onlyOnPowerAdapter = readSwitch(onlyOnPowerAdapterKey, settings.onlyOnPowerAdapter);
  return settings;
}

bool UserDefaultsDeepwakeGuardrailStore::readSwitch(const char* key, bool fallback) {
  const auto value = defaults_.object(key);
  if (!value) return fallback;
  if (const bool* on = value->get<bool>()) return *on;
  defaults_.remove(key);
  return fallback;
}

void UserDefaultsDeepwakeGuardrailStore::setSettings(const DeepwakeGuardrails::Settings& settings) {
  defaults_.set(batteryFloorKey, settings.batteryFloor);
  defaults_.set(stopsInLowPowerModeKey, settings.stopsInLowPowerMode);
  defaults_.set(stopsWhenLidOpensKey, settings.stopsWhenLidOpens);
  defaults_.set(onlyOnPowerAdapterKey, settings.onlyOnPowerAdapter);
}

}  // namespace wakeloft
