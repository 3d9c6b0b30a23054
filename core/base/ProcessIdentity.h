#pragma once

#include <sys/types.h>

#include <cstdint>

namespace wakeloft {

// One process, told apart from a later one that reuses its pid by when it
// started. The start time is in the system's own units (microseconds since
// 1970 on macOS, clock ticks since boot on Linux) and is only ever compared.
struct ProcessIdentity {
  pid_t pid = 0;
  std::uint64_t startTime = 0;

  friend bool operator==(const ProcessIdentity&, const ProcessIdentity&) = default;
};

}  // namespace wakeloft
