#pragma once

#include "automatic/AutomaticSessionStore.h"
#include "base/DefaultsDomain.h"
#include "base/StrictDefaults.h"

namespace wakeloft {

// The automatic rules as values in the user defaults, read strictly: a switch
// must be a boolean, a weekday set or a time of day an integer in its range,
// the combination "any" or "all", the apps an array of dictionaries of three
// strings that the settings can keep. Anything else reads as the default and
// is removed, so that the next launch does not trip over it again; reading
// never writes anything else. A value a configuration profile forces is the
// administrator's: read as it is, never removed, never written over.
class UserDefaultsAutomaticSessionStore final : public AutomaticSessionStore {
 public:
  static constexpr const char* whileExternalDisplayKey = "com.wakeloft.automaticWhileExternalDisplay";
  static constexpr const char* whileOnPowerAdapterKey = "com.wakeloft.automaticWhileOnPowerAdapter";
  static constexpr const char* whileAppsRunKey = "com.wakeloft.automaticWhileAppsRun";
  static constexpr const char* appsKey = "com.wakeloft.automaticApps";
  static constexpr const char* onScheduleKey = "com.wakeloft.automaticOnSchedule";
  static constexpr const char* scheduleWeekdaysKey = "com.wakeloft.automaticScheduleWeekdays";
  static constexpr const char* scheduleStartKey = "com.wakeloft.automaticScheduleStart";
  static constexpr const char* scheduleEndKey = "com.wakeloft.automaticScheduleEnd";
  static constexpr const char* combinationKey = "com.wakeloft.automaticCombination";
  static constexpr const char* suppressedKey = "com.wakeloft.automaticSessionsSuppressed";
  static constexpr const char* stopWhenScreenLocksKey = "com.wakeloft.stopWhenScreenLocks";

  explicit UserDefaultsAutomaticSessionStore(DefaultsDomain& defaults) : defaults_(defaults) {}

  AutomaticRules::Settings settings() override;
  void setSettings(const AutomaticRules::Settings& settings) override;
  bool isSuppressed() override { return StrictDefaults::readSwitch(defaults_, suppressedKey, false); }
  void setSuppressed(bool suppressed) override { defaults_.set(suppressedKey, suppressed); }
  bool stopsWhenScreenLocks() override {
    return StrictDefaults::readSwitch(defaults_, stopWhenScreenLocksKey, false);
  }
  void setStopsWhenScreenLocks(bool on) override;
  bool areRulesForced() override;
  bool isStopWhenScreenLocksForced() override { return defaults_.isForced(stopWhenScreenLocksKey); }

 private:
  int readInteger(const char* key, int fallback, int highest);

  DefaultsDomain& defaults_;
};

}  // namespace wakeloft
