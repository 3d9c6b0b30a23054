#include "helper/LidLeaseClientNumbers.h"

#include <cstdio>
#include <cstdlib>
#include <limits>

namespace wakeloft {

std::uint64_t LidLeaseClientNumbers::next() {
  const std::lock_guard<std::mutex> hold(lock_);
  if (last_ == std::numeric_limits<std::uint64_t>::max()) {
    std::fprintf(stderr, "WakeloftLidHelper: no client numbers are left; stopping so that none is used twice.\n");
    std::fflush(stderr);
    std::abort();
  }
  return ++last_;
}

}  // namespace wakeloft
