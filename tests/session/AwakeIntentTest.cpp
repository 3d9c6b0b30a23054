#include "session/AwakeIntent.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace wakeloft {
namespace {

TEST(AwakeIntentTest, TheDeadlineIsNowPlusTheLengthWhileThatIsAUsableDate) {
  const Date now{1'700'000'000};
  const double toTheLast = Date::distantFuture().secondsSince(now);
  EXPECT_EQ(AwakeIntent::deadline(1800, now), now.adding(1800));
  EXPECT_EQ(AwakeIntent::deadline(-60, now), now.adding(-60));
  EXPECT_EQ(AwakeIntent::deadline(toTheLast, now), Date::distantFuture());
  for (const double unusable : {toTheLast + 1, std::numeric_limits<double>::infinity(), std::nan("")}) {
    EXPECT_EQ(AwakeIntent::deadline(unusable, now), std::nullopt) << unusable;
  }
}

}  // namespace
}  // namespace wakeloft
