#include "clock/WaitDuration.h"

#include <gtest/gtest.h>

#include <limits>

namespace wakeloft {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t longest = 1'000'000'000LL * 1'000'000'000LL;

TEST(WaitDurationTest, OrdinaryWaitsKeepTheirLengthUnmeasurableOnesAreDueNowEndlessOnesStopAtTheLongest) {
  EXPECT_EQ(WaitDuration::nanoseconds(0.05), 50'000'000);
  EXPECT_EQ(WaitDuration::nanoseconds(2), 2'000'000'000);
  EXPECT_EQ(WaitDuration::nanoseconds(1e-9), 1);

  // Those that cannot be measured are due now.
  EXPECT_EQ(WaitDuration::nanoseconds(0), 0);
  EXPECT_EQ(WaitDuration::nanoseconds(-0.0), 0);
  EXPECT_EQ(WaitDuration::nanoseconds(-3), 0);
  EXPECT_EQ(WaitDuration::nanoseconds(-infinity), 0);
  EXPECT_EQ(WaitDuration::nanoseconds(nan), 0);

  // Endless ones stop at the longest instead of overflowing.
  EXPECT_EQ(WaitDuration::nanoseconds(infinity), longest);
  EXPECT_EQ(WaitDuration::nanoseconds(1e300), longest);
  // Past 2^63 ns a plain conversion would be undefined.
  EXPECT_EQ(WaitDuration::nanoseconds(1e10), longest);
  EXPECT_EQ(WaitDuration::nanoseconds(999'999'999.5), 999'999'999'500'000'000);
}

}  // namespace
}  // namespace wakeloft
