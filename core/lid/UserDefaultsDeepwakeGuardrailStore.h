#pragma once

#include "base/DefaultsDomain.h"
#include "lid/DeepwakeGuardrailStore.h"

namespace wakeloft {

// The guardrail settings as four values in the user defaults. Read strictly:
// the floor must be a number that is one of the floors offered, a switch a
// boolean; anything else reads as the default and is removed, so that the
// next launch does not trip over it again. A value a profile forces is read
// the same way but never removed or written.
class UserDefaultsDeepwakeGuardrailStore final : public DeepwakeGuardrailStore {
 public:
  static constexpr const char* batteryFloorKey = "com.wakeloft.deepwakeBatteryFloor";
  static constexpr const char* stopsInLowPowerModeKey = "com.wakeloft.deepwakeStopsInLowPowerMode";
  static constexpr const char* stopsWhenLidOpensKey = "com.wakeloft.deepwakeStopsWhenLidOpens";
  static constexpr const char* onlyOnPowerAdapterKey = "com.wakeloft.deepwakeOnlyOnPowerAdapter";
  // Read only as a profile forces it: the user has no switch for it.
  static constexpr const char* deepwakeAllowedKey = "com.wakeloft.deepwakeAllowed";

  explicit UserDefaultsDeepwakeGuardrailStore(DefaultsDomain& defaults) : defaults_(defaults) {}

  DeepwakeGuardrails::Settings settings() override;
  void setSettings(const DeepwakeGuardrails::Settings& settings) override;
  DeepwakeGuardrails::Forced forced() const override;
  bool isDeepwakeAllowed() const override;

 private:
  template <typename T>
  void setUnlessForced(const char* key, T value);

  DefaultsDomain& defaults_;
};

}  // namespace wakeloft
