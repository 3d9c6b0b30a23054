#pragma once

namespace wakeloft {

// Seconds since boot, not counting time asleep: lease terms must not run
// out while the Mac sleeps.
class UptimeProvider {
 public:
  virtual ~UptimeProvider() = default;
  virtual double uptime() const = 0;
};

}  // namespace wakeloft
