#pragma once

#include <cmath>
#include <cstdint>

namespace wakeloft {

// A wait given in seconds, as the signed 64-bit nanoseconds that system
// timers take. Waits are computed from clocks and dates, so NaN, negative or
// absurdly long values do turn up; converting those unchecked is undefined
// behaviour, and a time past the timer's range means "never".
namespace WaitDuration {

// About 31 years: far beyond any wait the program makes, and far inside the
// range of a system timer counted from now.
inline constexpr double longestWaitSeconds = 1.0e9;

// NaN and negative waits are due now; longer waits are cut to the longest.
inline std::int64_t nanoseconds(double seconds) {
  if (!(seconds > 0)) return 0;
  const double clamped = seconds < longestWaitSeconds ? seconds : longestWaitSeconds;
  return static_cast<std::int64_t>(std::llround(clamped * 1e9));
}

}  // namespace WaitDuration
}  // namespace wakeloft
