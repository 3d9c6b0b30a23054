#pragma once

#include <cstdint>

#include "base/BridgedError.h"

namespace wakeloft {

// The power assertion could not be created; `code` is the system's IOReturn.
class SleepBlockerError : public BridgedError {
 public:
  static SleepBlockerError assertionFailed(std::int32_t code) { return SleepBlockerError(code); }

  std::int32_t assertionCode() const { return assertionCode_; }

 private:
  explicit SleepBlockerError(std::int32_t code)
      : BridgedError("WakeloftCore.SleepBlockerError", 0), assertionCode_(code) {}

  std::int32_t assertionCode_;
};

}  // namespace wakeloft
