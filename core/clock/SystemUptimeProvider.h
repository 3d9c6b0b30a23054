#pragma once

#include "clock/UptimeProvider.h"

namespace wakeloft {

// Seconds since boot without time asleep; defined by the platform layer.
class SystemUptimeProvider final : public UptimeProvider {
 public:
  double uptime() const override;
};

}  // namespace wakeloft
