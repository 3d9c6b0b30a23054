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
      removeUnlessForced(batteryFloorKey);
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
  removeUnlessForced(key);
  return fallback;
}

void UserDefaultsDeepwakeGuardrailStore::removeUnlessForced(const char* key) {
  if (!defaults_.isForced(key)) defaults_.remove(key);
}

template <typename T>
void UserDefaultsDeepwakeGuardrailStore::setUnlessForced(const char* key, T value) {
  if (!defaults_.isForced(key)) defaults_.set(key, value);
}

bool UserDefaultsDeepwakeGuardrailStore::isDeepwakeAllowed() const {
  if (!defaults_.isForced(deepwakeAllowedKey)) return true;
  // A profile that says nothing clear allows nothing.
  const auto value = defaults_.object(deepwakeAllowedKey);
  const bool* allowed = value ? value->get<bool>() : nullptr;
  return allowed && *allowed;
}

DeepwakeGuardrails::Forced UserDefaultsDeepwakeGuardrailStore::forced() const {
  return {defaults_.isForced(batteryFloorKey), defaults_.isForced(stopsInLowPowerModeKey),
          defaults_.isForced(stopsWhenLidOpensKey), defaults_.isForced(onlyOnPowerAdapterKey)};
}

void UserDefaultsDeepwakeGuardrailStore::setSettings(const DeepwakeGuardrails::Settings& settings) {
  setUnlessForced(batteryFloorKey, settings.batteryFloor);
  setUnlessForced(stopsInLowPowerModeKey, settings.stopsInLowPowerMode);
  setUnlessForced(stopsWhenLidOpensKey, settings.stopsWhenLidOpens);
  setUnlessForced(onlyOnPowerAdapterKey, settings.onlyOnPowerAdapter);
}

}  // namespace wakeloft
