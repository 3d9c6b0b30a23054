#pragma once

#include "base/DefaultsDomain.h"
#include "prefs/PresetDurationStore.h"

namespace wakeloft {

// The starred lengths as an array of numbers (seconds) in the user defaults.
class UserDefaultsPresetDurationStore final : public PresetDurationStore {
 public:
  static constexpr const char* key = "com.wakeloft.presetDurations";

  explicit UserDefaultsPresetDurationStore(DefaultsDomain& defaults) : defaults_(defaults) {}

  // Absent unless the key holds an array of numbers only; one element of
  // another kind spoils the whole value.
  std::optional<std::vector<double>> pinnedSeconds() const override;
  void setPinnedSeconds(std::optional<std::vector<double>> seconds) override;

 private:
  DefaultsDomain& defaults_;
};

}  // namespace wakeloft
