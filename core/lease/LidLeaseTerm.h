#pragma once

#include "base/Date.h"

namespace wakeloft {

// The end of a lease, held twice: on the wall clock, which can be set, and in
// system uptime, which cannot be set and stands still while asleep. The term
// is over as soon as either end is reached.
struct LidLeaseTerm {
  Date expiry;
  double uptimeExpiry = 0;

  friend bool operator==(const LidLeaseTerm&, const LidLeaseTerm&) = default;
};

}  // namespace wakeloft
