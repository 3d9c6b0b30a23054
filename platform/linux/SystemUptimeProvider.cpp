#include "clock/SystemUptimeProvider.h"

#include <time.h>

namespace wakeloft {

// CLOCK_MONOTONIC stops while the machine is suspended.
double SystemUptimeProvider::uptime() const {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

}  // namespace wakeloft
