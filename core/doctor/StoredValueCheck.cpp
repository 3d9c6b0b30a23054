#include "doctor/StoredValueCheck.h"

#include "base/InMemoryDefaultsDomain.h"
#include "lid/PublishedLidHelper.h"
#include "lid/UserDefaultsDeepwakeGuardrailStore.h"
#include "prefs/UserDefaultsPresetDurationStore.h"
#include "session/UserDefaultsAwakeIntentStore.h"
#include "session/UserDefaultsProcessBindingStore.h"

namespace wakeloft::StoredValueCheck {

namespace {

const char* const guardrailKeys[] = {
    UserDefaultsDeepwakeGuardrailStore::batteryFloorKey, UserDefaultsDeepwakeGuardrailStore::stopsInLowPowerModeKey,
    UserDefaultsDeepwakeGuardrailStore::stopsWhenLidOpensKey, UserDefaultsDeepwakeGuardrailStore::onlyOnPowerAdapterKey};

// The guardrail store removes what it cannot read: let it, on a copy.
InMemoryDefaultsDomain guardrailCopy(const DefaultsDomain& defaults, DeepwakeGuardrails::Settings& settings) {
  InMemoryDefaultsDomain copy;
  for (const char* key : guardrailKeys) {
    if (const auto value = defaults.object(key)) copy.set(key, *value);
  }
  settings = UserDefaultsDeepwakeGuardrailStore(copy).settings();
  return copy;
}

}  // namespace

DeepwakeGuardrails::Settings guardrailSettings(const DefaultsDomain& defaults) {
  DeepwakeGuardrails::Settings settings;
  guardrailCopy(defaults, settings);
  return settings;
}

std::vector<std::string> unreadableKeys(DefaultsDomain& defaults) {
  std::vector<std::string> keys;
  if (UserDefaultsAwakeIntentStore(defaults).load().isUnreadableDeadline()) {
    keys.emplace_back(UserDefaultsAwakeIntentStore::awakeUntilKey);
  }
  if (UserDefaultsProcessBindingStore(defaults).load().isUnreadable()) {
    keys.emplace_back(UserDefaultsProcessBindingStore::key);
  }
  if (defaults.object(UserDefaultsPresetDurationStore::key) &&
      !UserDefaultsPresetDurationStore(defaults).pinnedSeconds()) {
    keys.emplace_back(UserDefaultsPresetDurationStore::key);
  }

  DeepwakeGuardrails::Settings settings;
  const auto copy = guardrailCopy(defaults, settings);
  for (const char* key : guardrailKeys) {
    if (defaults.object(key) && !copy.object(key)) keys.emplace_back(key);
  }

  for (auto& key : PublishedLidHelper::read(defaults).unreadableKeys) keys.push_back(std::move(key));
  return keys;
}

}  // namespace wakeloft::StoredValueCheck
