#include <gtest/gtest.h>

#include <unordered_set>

#include "lid/BatteryCharge.h"
#include "lid/DeepwakeGuardrails.h"
#include "lid/LidClosePrecaution.h"
#include "lid/OnlineDisplayList.h"
#include "lid/ProvidingPowerSource.h"

namespace wakeloft {
namespace {

constexpr MachineConditionsSnapshot builtInOnlyOnBattery{.isOnBattery = true, .hasExternalDisplay = false};
constexpr MachineConditionsSnapshot externalOnBattery{.isOnBattery = true, .hasExternalDisplay = true};
constexpr MachineConditionsSnapshot builtInOnlyOnPower{.isOnBattery = false, .hasExternalDisplay = false};

TEST(LidClosePrecautionTest, NoHeatPathOnlyWhileOnAndAcknowledgedAndTheWarningBeforeFirstUseWinsOverAll) {
  EXPECT_EQ(LidClosePrecaution::shown(true, true, builtInOnlyOnBattery), LidClosePrecaution::noHeatPath);
  EXPECT_EQ(LidClosePrecaution::shown(true, true, externalOnBattery), LidClosePrecaution::none);
  EXPECT_EQ(LidClosePrecaution::shown(true, true, builtInOnlyOnPower), LidClosePrecaution::none);
  EXPECT_EQ(LidClosePrecaution::shown(false, true, builtInOnlyOnBattery), LidClosePrecaution::none);
  EXPECT_EQ(LidClosePrecaution::shown(false, false, builtInOnlyOnPower), LidClosePrecaution::beforeFirstUse);
}

TEST(ProvidingPowerSourceTest, OnlyBatteryPowerCountsAsOnBatteryAndNoInformationIsNoBattery) {
  EXPECT_TRUE(ProvidingPowerSource::isBattery("Battery Power"));
  EXPECT_FALSE(ProvidingPowerSource::isBattery("UPS Power"));
  EXPECT_FALSE(ProvidingPowerSource::isBattery(std::nullopt));
}

TEST(BatteryChargeTest, APercentOfTheMaximumRoundedAndCappedAndNoneFromUnusableFigures) {
  EXPECT_EQ(BatteryCharge::percent(2000, 4000), 50);
  EXPECT_EQ(BatteryCharge::percent(1, 200), 1);  // 0.5 rounds up
  EXPECT_EQ(BatteryCharge::percent(105, 100), 100);
  const std::pair<std::optional<long long>, std::optional<long long>> unusable[] = {
      {std::nullopt, 100}, {50, std::nullopt}, {50, 0}, {-1, 100}};
  for (const auto& [current, maximum] : unusable) EXPECT_EQ(BatteryCharge::percent(current, maximum), std::nullopt);
}

using Stop = DeepwakeGuardrails::Stop;
using Rule = Stop::Rule;
using Notice = DeepwakeGuardrails::Notice;

MachineConditionsSnapshot onBatteryAt(int charge) {
  return {.isOnBattery = true, .batteryCharge = charge, .isLidClosed = true};
}

TEST(DeepwakeGuardrailsTest, TheBatteryFloorHoldsAtAndBelowItOnlyOnBatteryWithAFigure) {
  const DeepwakeGuardrails::Settings settings;  // floor 20
  EXPECT_EQ(DeepwakeGuardrails::holding(settings, onBatteryAt(21)), std::nullopt);
  EXPECT_EQ(DeepwakeGuardrails::holding(settings, onBatteryAt(20)), (Stop{Rule::batteryFloor, 20}));
  EXPECT_EQ(DeepwakeGuardrails::holding({.batteryFloor = 0}, onBatteryAt(0)), std::nullopt);
  auto charging = onBatteryAt(3), noFigure = onBatteryAt(3);
  charging.isOnBattery = false;
  noFigure.batteryCharge.reset();
  EXPECT_EQ(DeepwakeGuardrails::holding(settings, charging), std::nullopt);
  EXPECT_EQ(DeepwakeGuardrails::holding(settings, noFigure), std::nullopt);
}

TEST(DeepwakeGuardrailsTest, HeatComesBeforeLowPowerModeWhichComesBeforeTheFloor) {
  auto everything = onBatteryAt(5);
  everything.isLowPowerModeOn = true;
  everything.thermalState = ThermalState::critical;
  EXPECT_EQ(DeepwakeGuardrails::holding({}, everything), Stop{Rule::criticalHeat});
  everything.thermalState = ThermalState::serious;  // a notice, not a stop
  EXPECT_EQ(DeepwakeGuardrails::holding({}, everything), Stop{Rule::lowPowerMode});
  EXPECT_EQ(DeepwakeGuardrails::holding({.stopsInLowPowerMode = false}, everything), (Stop{Rule::batteryFloor, 20}));
}

TEST(DeepwakeGuardrailsTest, OpeningTheLidStopsOnlyWhenChosenAndOnlyFromKnownClosed) {
  auto closed = onBatteryAt(80), open = onBatteryAt(80), unknown = onBatteryAt(80);
  open.isLidClosed = false;
  unknown.isLidClosed.reset();
  const DeepwakeGuardrails::Settings chosen{.stopsWhenLidOpens = true};
  EXPECT_EQ(DeepwakeGuardrails::stopping(chosen, closed, open), Stop{Rule::lidOpened});
  EXPECT_EQ(DeepwakeGuardrails::stopping({}, closed, open), std::nullopt);
  EXPECT_EQ(DeepwakeGuardrails::stopping(chosen, open, open), std::nullopt);
  EXPECT_EQ(DeepwakeGuardrails::stopping(chosen, unknown, open), std::nullopt);
}

TEST(DeepwakeGuardrailsTest, TheNoticeNamesThePauseThenSeriousHeatThenTheFloor) {
  auto hot = onBatteryAt(80);
  hot.thermalState = ThermalState::serious;
  EXPECT_EQ(DeepwakeGuardrails::notice({}, hot, /*isPausedForPower=*/true), Notice::pausedForPower);
  EXPECT_EQ(DeepwakeGuardrails::notice({}, hot, false), Notice::seriousHeat);
  EXPECT_EQ(DeepwakeGuardrails::notice({}, onBatteryAt(80), false), Notice::batteryAboveFloor);
  EXPECT_EQ(DeepwakeGuardrails::notice({.batteryFloor = 0}, onBatteryAt(80), false), Notice::none);
}

class OnlineDisplayListTest : public ::testing::Test {
 protected:
  bool hasExternal(bool listed, std::uint32_t count) {
    return OnlineDisplayList::hasExternalDisplay(listed, ids, count,
                                                 [this](OnlineDisplayList::DisplayID id) { return builtIn.contains(id); });
  }

  OnlineDisplayList::IDs ids{};
  std::unordered_set<OnlineDisplayList::DisplayID> builtIn{1};
};

TEST_F(OnlineDisplayListTest, AnyDisplayNotBuiltInIsExternalAndAFailedListCallAssumesOne) {
  EXPECT_TRUE(hasExternal(false, 0));
  ids[0] = 1;
  EXPECT_FALSE(hasExternal(true, 1));
  ids[1] = 7;
  EXPECT_TRUE(hasExternal(true, 2));
  // A lid closed with an external display: no built-in display listed at all.
  ids[0] = 7;
  EXPECT_TRUE(hasExternal(true, 1));
}

}  // namespace
}  // namespace wakeloft
