#include "status/SpokenStatus.h"

#include <gtest/gtest.h>

#include <limits>

namespace wakeloft {
namespace {

TEST(SpokenStatusTest, OffAndOnWithoutDeadline) {
  EXPECT_EQ(SpokenStatus::describing(false, 600), SpokenStatus::off());
  EXPECT_EQ(SpokenStatus::describing(false, std::nullopt), SpokenStatus::off());
  EXPECT_EQ(SpokenStatus::describing(true, std::nullopt), SpokenStatus::on());
}

TEST(SpokenStatusTest, TimeLeftIsRoundedDownToWholeMinutes) {
  EXPECT_EQ(SpokenStatus::describing(true, 119), SpokenStatus::timeLeft({60}));
  EXPECT_EQ(SpokenStatus::describing(true, 60), SpokenStatus::timeLeft({60}));
  EXPECT_EQ(SpokenStatus::describing(true, 7199.5), SpokenStatus::timeLeft({7140}));
  EXPECT_EQ(SpokenStatus::describing(true, 119).left(), std::optional(AwakeDuration{60}));
}

TEST(SpokenStatusTest, UnderAMinuteOrNotANumberIsTheLastMinute) {
  EXPECT_EQ(SpokenStatus::describing(true, 59.9), SpokenStatus::lessThanAMinuteLeft());
  EXPECT_EQ(SpokenStatus::describing(true, 0), SpokenStatus::lessThanAMinuteLeft());
  EXPECT_EQ(SpokenStatus::describing(true, std::numeric_limits<double>::quiet_NaN()),
            SpokenStatus::lessThanAMinuteLeft());
}

TEST(SpokenStatusTest, EqualOnlyWithEqualTimeLeft) {
  EXPECT_NE(SpokenStatus::timeLeft({60}), SpokenStatus::timeLeft({120}));
  EXPECT_NE(SpokenStatus::timeLeft({60}), SpokenStatus::on());
  EXPECT_EQ(SpokenStatus::on().left(), std::nullopt);
}

}  // namespace
}  // namespace wakeloft
