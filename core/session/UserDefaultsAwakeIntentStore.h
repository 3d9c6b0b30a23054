#pragma once

#include "base/DefaultsDomain.h"
#include "session/AwakeIntentStore.h"

namespace wakeloft {

// The request in the user defaults: a flag that is present and true while a
// session is requested, and the deadline in seconds since 1970.
class UserDefaultsAwakeIntentStore final : public AwakeIntentStore {
 public:
  static constexpr const char* isAwakeRequestedKey = "com.wakeloft.isAwakeRequested";
  static constexpr const char* awakeUntilKey = "com.wakeloft.awakeUntil";

  explicit UserDefaultsAwakeIntentStore(DefaultsDomain& defaults) : defaults_(defaults) {}

  StoredAwakeIntent load() const override;
  void save(const AwakeIntent& intent) override;

 private:
  DefaultsDomain& defaults_;
};

}  // namespace wakeloft
