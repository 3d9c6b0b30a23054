#include "status/SpokenStatus.h"

#include <gtest/gtest.h>

#include <limits>

namespace wakeloft {
namespace {

TEST(SpokenStatusTest, FollowsTheSessionAndItsTimeLeftInWholeMinutes) {
  const struct {
    bool isOn;
    std::optional<double> remaining;
    SpokenStatus expected;
  } cases[] = {
      {false, 600, SpokenStatus::off()},
      // The panel's tests pin the ordinary cases.
      {true, 119, SpokenStatus::timeLeft({60})},
      {true, 60, SpokenStatus::timeLeft({60})},
      // Under a minute, and any time that is not a finite number.
      {true, 59.9, SpokenStatus::lessThanAMinuteLeft()},
      {true, std::numeric_limits<double>::quiet_NaN(), SpokenStatus::lessThanAMinuteLeft()},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(SpokenStatus::describing(c.isOn, c.remaining), c.expected) << c.isOn << " " << c.remaining.value_or(-1);
  }
}

}  // namespace
}  // namespace wakeloft
