#include "clock/SystemContinuousTimeProvider.h"

#include <time.h>

namespace wakeloft {

// CLOCK_BOOTTIME counts time suspended and is never set.
double SystemContinuousTimeProvider::continuousTime() const {
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

}  // namespace wakeloft
