#pragma once

#include "base/DefaultsDomain.h"
#include "lid/LidAwakeStore.h"

namespace wakeloft {

// The acknowledgement as a boolean in the user defaults.
class UserDefaultsLidAwakeStore final : public LidAwakeStore {
 public:
  static constexpr const char* key = "com.wakeloft.acknowledgedHeatWarning";

  explicit UserDefaultsLidAwakeStore(DefaultsDomain& defaults) : defaults_(defaults) {}

  bool hasAcknowledgedHeatWarning() const override;
  void setHasAcknowledgedHeatWarning(bool acknowledged) override;

 private:
  DefaultsDomain& defaults_;
};

}  // namespace wakeloft
