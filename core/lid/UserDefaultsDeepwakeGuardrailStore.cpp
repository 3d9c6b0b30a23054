#include "lid/UserDefaultsDeepwakeGuardrailStore.h"

#include <algorithm>
#include <cmath>

#include "base/StrictDefaults.h"

namespace wakeloft {

using StrictDefaults::readSwitch;
using StrictDefaults::removeUnlessForced;

DeepwakeGuardrails::Settings UserDefaultsDeepwakeGuardrailStore::settings() {
  DeepwakeGuardrails::Settings settings;
  if (const auto value = defaults_.object(batteryFloorKey)) {
    // Booleans are not numbers here, whatever the platform's bridging says.
    const auto number = value->number();
    if (number && std::trunc(*number) == *number && DeepwakeGuardrails::Settings::isBatteryFloor(
                                                         static_cast<long long>(std::clamp(*number, -1.0, 101.0)))) {
      settings.batteryFloor = static_cast<int>(*number);
    } else {
      removeUnlessForced(defaults_, batteryFloorKey);
    }
  }
  settings.stopsInLowPowerMode = readSwitch(defaults_, stopsInLowPowerModeKey, settings.stopsInLowPowerMode);
  settings.stopsWhenLidOpens = readSwitch(defaults_, stopsWhenLidOpensKey, settings.stopsWhenLidOpens);
  settings.onlyOnPowerAdapter = readSwitch(defaults_, onlyOnPowerAdapterKey, settings.onlyOnPowerAdapter);
  return settings;
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
