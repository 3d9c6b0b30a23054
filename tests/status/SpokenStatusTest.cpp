#include "status/SpokenStatus.h"

#include <gtest/gtest.h>

#include <limits>

namespace wakeloft {
namespace {

TEST(SpokenStatusTest, FollowsTheSessionAndItsRemainingTimeEqualOnlyWithEqualTimeLeft) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const struct {
    bool isOn;
    std::optional<double> remaining;
    SpokenStatus expected;
  } cases[] = {
      {false, 600, SpokenStatus::off()},
      {false, std::nullopt, SpokenStatus::off()},
      {true, std::nullopt, SpokenStatus::on()},
      // Whole minutes, rounded down.
      {true, 119, SpokenStatus::timeLeft({60})},
      {true, 60, SpokenStatus::timeLeft({60})},
      {true, 7199.5, SpokenStatus::timeLeft({7140})},
      // Under a minute, and any time that is not a finite number.
      {true, 59.9, SpokenStatus::lessThanAMinuteLeft()},
      {true, 0, SpokenStatus::lessThanAMinuteLeft()},
      {true, std::numeric_limits<double>::quiet_NaN(), SpokenStatus::lessThanAMinuteLeft()},
      {true, infinity, SpokenStatus::lessThanAMinuteLeft()},
      {true, -infinity, SpokenStatus::lessThanAMinuteLeft()},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(SpokenStatus::describing(c.isOn, c.remaining), c.expected)
        << c.isOn << " " << c.remaining.value_or(-1);
  }
  EXPECT_EQ(SpokenStatus::describing(true, 119).left(), std::optional(AwakeDuration{60}));

  EXPECT_NE(SpokenStatus::timeLeft({60}), SpokenStatus::timeLeft({120}));
  EXPECT_NE(SpokenStatus::timeLeft({60}), SpokenStatus::on());
  EXPECT_EQ(SpokenStatus::on().left(), std::nullopt);
}

}  // namespace
}  // namespace wakeloft
