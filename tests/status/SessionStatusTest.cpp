#include <gtest/gtest.h>

#include "status/AwakeExplanation.h"
#include "status/AwakeSessionControls.h"
#include "status/MenuBarIcon.h"

namespace wakeloft {
namespace {

const std::optional<Date> deadline = Date::fromSecondsSince1970(1'700'000'000);

TEST(AwakeExplanationTest, TheExplanationTellsLidAndDeadlineApartAndOnlyARunningTimerCanBeCancelled) {
  for (const auto& until : {std::optional<Date>(), deadline}) {
    for (const bool lid : {false, true}) {
      EXPECT_EQ(AwakeExplanation::describing(false, until, lid), AwakeExplanation::sleepsNormally);
    }
  }

  EXPECT_EQ(AwakeExplanation::describing(true, std::nullopt, false), AwakeExplanation::awakeIndefinitely);
  EXPECT_EQ(AwakeExplanation::describing(true, deadline, false), AwakeExplanation::awakeUntilSessionEnds);
  EXPECT_EQ(AwakeExplanation::describing(true, std::nullopt, true), AwakeExplanation::awakeWithLidClosedIndefinitely);
  EXPECT_EQ(AwakeExplanation::describing(true, deadline, true), AwakeExplanation::awakeWithLidClosedUntilSessionEnds);

  EXPECT_EQ(AwakeSessionControls::shown(true, deadline), AwakeSessionControls::cancelTimer);
  EXPECT_EQ(AwakeSessionControls::shown(true, std::nullopt), AwakeSessionControls::presets);
  EXPECT_EQ(AwakeSessionControls::shown(false, deadline), AwakeSessionControls::presets);
  EXPECT_EQ(AwakeSessionControls::shown(false, std::nullopt), AwakeSessionControls::presets);
}

TEST(MenuBarIconTest, OffShowsNothingElseOnABadgeForADeadlineAndTheLidMode) {
  const auto icon = MenuBarIcon::current(false, deadline, true);
  EXPECT_FALSE(icon.isOn);
  EXPECT_FALSE(icon.showsTimerBadge);
  EXPECT_FALSE(icon.keepsLidClosedAwake);
  EXPECT_EQ(icon.spokenLabel(), MenuBarIcon::SpokenLabel::off);
  EXPECT_EQ((MenuBarIcon{false, true, true}).spokenLabel(), MenuBarIcon::SpokenLabel::off);

  using Label = MenuBarIcon::SpokenLabel;
  EXPECT_EQ(MenuBarIcon::current(true, std::nullopt, false), (MenuBarIcon{true, false, false}));
  EXPECT_EQ(MenuBarIcon::current(true, deadline, true), (MenuBarIcon{true, true, true}));

  EXPECT_EQ(MenuBarIcon::current(true, std::nullopt, false).spokenLabel(), Label::on);
  EXPECT_EQ(MenuBarIcon::current(true, deadline, false).spokenLabel(), Label::onWithTimerRunning);
  EXPECT_EQ(MenuBarIcon::current(true, std::nullopt, true).spokenLabel(), Label::onWithLidClosed);
  EXPECT_EQ(MenuBarIcon::current(true, deadline, true).spokenLabel(), Label::onWithLidClosedAndTimerRunning);
}

}  // namespace
}  // namespace wakeloft
