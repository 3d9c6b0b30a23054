#include <gtest/gtest.h>

#include "status/AwakeExplanation.h"
#include "status/AwakeSessionControls.h"
#include "status/MenuBarIcon.h"

namespace wakeloft {
namespace {

const std::optional<Date> deadline = Date::fromSecondsSince1970(1'700'000'000);

TEST(AwakeExplanationTest, TheExplanationTellsLidAndDeadlineApartAndOnlyARunningTimerCanBeCancelled) {
  EXPECT_EQ(AwakeExplanation::describing(false, deadline, true), AwakeExplanation::sleepsNormally);

  EXPECT_EQ(AwakeExplanation::describing(true, std::nullopt, false), AwakeExplanation::awakeIndefinitely);
  EXPECT_EQ(AwakeExplanation::describing(true, deadline, false), AwakeExplanation::awakeUntilSessionEnds);
  EXPECT_EQ(AwakeExplanation::describing(true, std::nullopt, true), AwakeExplanation::awakeWithLidClosedIndefinitely);
  EXPECT_EQ(AwakeExplanation::describing(true, deadline, true), AwakeExplanation::awakeWithLidClosedUntilSessionEnds);

  EXPECT_EQ(AwakeSessionControls::shown(true, deadline), AwakeSessionControls::cancelTimer);
  EXPECT_EQ(AwakeSessionControls::shown(true, std::nullopt), AwakeSessionControls::presets);
  EXPECT_EQ(AwakeSessionControls::shown(false, deadline), AwakeSessionControls::presets);
}

}  // namespace
}  // namespace wakeloft
