#include <gtest/gtest.h>

#include <time.h>

#include <thread>

#include "clock/SystemContinuousTimeProvider.h"
#include "clock/SystemDateProvider.h"
#include "clock/SystemUptimeProvider.h"

namespace wakeloft {
namespace {

TEST(SystemClocksTest, ClocksAdvanceTogetherWhileAwakeTheWallClockInSecondsSince1970) {
  const SystemUptimeProvider uptime;
  const SystemContinuousTimeProvider continuous;
  const SystemDateProvider dates;
  const double u0 = uptime.uptime(), c0 = continuous.continuousTime();
  const Date d0 = dates.now();
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  const double du = uptime.uptime() - u0, dc = continuous.continuousTime() - c0;
  EXPECT_GE(du, 0.019);
  EXPECT_GE(dc, 0.019);
  EXPECT_NEAR(du, dc, 0.01);
  EXPECT_NEAR(dates.now().secondsSince(d0), du, 0.05);
  EXPECT_NEAR(dates.now().secondsSince1970, static_cast<double>(time(nullptr)), 2);
}

}  // namespace
}  // namespace wakeloft
