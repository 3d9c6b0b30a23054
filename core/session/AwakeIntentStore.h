#pragma once

#include "session/StoredAwakeIntent.h"

namespace wakeloft {

// Carries the user's request across launches. Main thread only.
class AwakeIntentStore {
 public:
  virtual ~AwakeIntentStore() = default;
  virtual StoredAwakeIntent load() const = 0;
  virtual void save(const AwakeIntent& intent) = 0;
};

}  // namespace wakeloft
