#include "clock/SystemContinuousTimeProvider.h"

#include <time.h>

namespace wakeloft {

// Darwin's CLOCK_MONOTONIC keeps counting while the Mac sleeps and is never set.
static_assert(CLOCK_MONOTONIC == 6);

double SystemContinuousTimeProvider::continuousTime() const {
  return static_cast<double>(clock_gettime_nsec_np(CLOCK_MONOTONIC)) / 1e9;
}

}  // namespace wakeloft
