#include "clock/WaitDuration.h"

#include <gtest/gtest.h>

#include <limits>

namespace wakeloft {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t longest = 1'000'000'000LL * 1'000'000'000LL;

TEST(WaitDurationTest, OrdinaryWaitsKeepTheirLength) {
  EXPECT_EQ(WaitDuration::nanoseconds(0.05), 50'000'000);
  EXPECT_EQ(WaitDuration::nanoseconds(1e-9), 1);
}

TEST(WaitDurationTest, UnmeasurableWaitsAreDueNow) {
  for (const double wait : {-0.0, -3.0, -infinity, nan}) EXPECT_EQ(WaitDuration::nanoseconds(wait), 0) << wait;
}

// Past 2^63 ns a plain conversion would be undefined.
TEST(WaitDurationTest, EndlessWaitsStopAtTheLongestInsteadOfOverflowing) {
  for (const double wait : {1e10, 1e300, infinity}) EXPECT_EQ(WaitDuration::nanoseconds(wait), longest) << wait;
}

}  // namespace
}  // namespace wakeloft
