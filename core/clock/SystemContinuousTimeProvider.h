#pragma once

#include "clock/ContinuousTimeProvider.h"

namespace wakeloft {

// Seconds on a clock that counts through sleep; defined by the platform layer.
class SystemContinuousTimeProvider final : public ContinuousTimeProvider {
 public:
  double continuousTime() const override;
};

}  // namespace wakeloft
