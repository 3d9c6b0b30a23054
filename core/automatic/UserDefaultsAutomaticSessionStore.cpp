#include "automatic/UserDefaultsAutomaticSessionStore.h"

#include <cmath>

#include "base/StrictDefaults.h"

namespace wakeloft {

using StrictDefaults::readSwitch;
using StrictDefaults::removeUnlessForced;

namespace {

using Dictionary = DefaultsValue::Dictionary;

constexpr const char* bundleIdentifierField = "bundleIdentifier";
constexpr const char* nameField = "name";
constexpr const char* pathField = "path";

const std::string* text(const Dictionary& dictionary, std::string_view name) {
  for (const auto& [key, value] : dictionary) {
    if (key == name) return value.get<std::string>();
  }
  return nullptr;
}

std::optional<std::vector<AutomaticRules::ChosenApp>> readApps(const DefaultsValue& value) {
  const auto* array = value.get<DefaultsValue::Array>();
  if (!array || array->size() > AutomaticRules::Settings::mostApps) return std::nullopt;
  std::vector<AutomaticRules::ChosenApp> apps;
  for (const auto& element : *array) {
    const auto* dictionary = element.get<Dictionary>();
    if (!dictionary || dictionary->size() != 3) return std::nullopt;
    const auto* identifier = text(*dictionary, bundleIdentifierField);
    const auto* name = text(*dictionary, nameField);
    const auto* path = text(*dictionary, pathField);
    if (!identifier || !name || !path) return std::nullopt;
    apps.push_back({*identifier, *name, *path});
  }
  return apps;
}

}  // namespace

AutomaticRules::Settings UserDefaultsAutomaticSessionStore::settings() {
  AutomaticRules::Settings settings;
  settings.whileExternalDisplay = readSwitch(defaults_, whileExternalDisplayKey, settings.whileExternalDisplay);
  settings.whileOnPowerAdapter = readSwitch(defaults_, whileOnPowerAdapterKey, settings.whileOnPowerAdapter);
  settings.whileAppsRun = readSwitch(defaults_, whileAppsRunKey, settings.whileAppsRun);
  settings.onSchedule = readSwitch(defaults_, onScheduleKey, settings.onSchedule);
  auto& schedule = settings.schedule;
  schedule.weekdays =
      static_cast<std::uint8_t>(readInteger(scheduleWeekdaysKey, schedule.weekdays, Schedule::allWeekdays));
  schedule.start = readInteger(scheduleStartKey, schedule.start, Schedule::minutesPerDay - 1);
  schedule.end = readInteger(scheduleEndKey, schedule.end, Schedule::minutesPerDay - 1);

  if (const auto value = defaults_.object(combinationKey)) {
    const auto* name = value->get<std::string>();
    if (name && *name == "all") {
      settings.combination = AutomaticRules::Combination::all;
    } else if (!name || *name != "any") {
      removeUnlessForced(defaults_, combinationKey);
    }
  }
  if (const auto value = defaults_.object(appsKey)) {
    // Apps are judged together: two with one bundle identifier are as
    // unreadable as a number where a name belongs.
    AutomaticRules::Settings withApps;
    auto apps = readApps(*value);
    if (apps) withApps.apps = std::move(*apps);
    if (apps && withApps.isValid()) {
      settings.apps = std::move(withApps.apps);
    } else {
      removeUnlessForced(defaults_, appsKey);
    }
  }
  return settings;
}

void UserDefaultsAutomaticSessionStore::setSettings(const AutomaticRules::Settings& settings) {
  if (areRulesForced()) return;
  defaults_.set(whileExternalDisplayKey, settings.whileExternalDisplay);
  defaults_.set(whileOnPowerAdapterKey, settings.whileOnPowerAdapter);
  defaults_.set(whileAppsRunKey, settings.whileAppsRun);
  defaults_.set(onScheduleKey, settings.onSchedule);
  defaults_.set(scheduleWeekdaysKey, static_cast<int>(settings.schedule.weekdays));
  defaults_.set(scheduleStartKey, settings.schedule.start);
  defaults_.set(scheduleEndKey, settings.schedule.end);
  defaults_.set(combinationKey, settings.combination == AutomaticRules::Combination::all ? "all" : "any");
  DefaultsValue::Array apps;
  for (const auto& app : settings.apps) {
    apps.emplace_back(
        Dictionary{{bundleIdentifierField, app.bundleIdentifier}, {nameField, app.name}, {pathField, app.path}});
  }
  defaults_.set(appsKey, std::move(apps));
}

void UserDefaultsAutomaticSessionStore::setStopsWhenScreenLocks(bool on) {
  if (!isStopWhenScreenLocksForced()) defaults_.set(stopWhenScreenLocksKey, on);
}

bool UserDefaultsAutomaticSessionStore::areRulesForced() {
  for (const char* key : {whileExternalDisplayKey, whileOnPowerAdapterKey, whileAppsRunKey, appsKey, onScheduleKey,
                          scheduleWeekdaysKey, scheduleStartKey, scheduleEndKey, combinationKey}) {
    if (defaults_.isForced(key)) return true;
  }
  return false;
}

int UserDefaultsAutomaticSessionStore::readInteger(const char* key, int fallback, int highest) {
  const auto value = defaults_.object(key);
  if (!value) return fallback;
  // Booleans are not numbers here, whatever the platform's bridging says.
  const auto number = value->number();
  if (number && std::trunc(*number) == *number && *number >= 0 && *number <= highest) return static_cast<int>(*number);
  removeUnlessForced(defaults_, key);
  return fallback;
}

}  // namespace wakeloft
