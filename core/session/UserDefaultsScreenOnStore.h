#pragma once

#include "base/DefaultsDomain.h"
#include "session/ScreenOnStore.h"

namespace wakeloft {

// "Keep the screen on" as a boolean in the user defaults, read strictly:
// anything else reads as off and is removed, so that the next launch does
// not trip over it again.
class UserDefaultsScreenOnStore final : public ScreenOnStore {
 public:
  static constexpr const char* keepScreenOnKey = "com.wakeloft.keepScreenOn";

  explicit UserDefaultsScreenOnStore(DefaultsDomain& defaults) : defaults_(defaults) {}

  bool keepsScreenOn() override;
  void setKeepsScreenOn(bool on) override { defaults_.set(keepScreenOnKey, on); }

 private:
  DefaultsDomain& defaults_;
};

}  // namespace wakeloft
