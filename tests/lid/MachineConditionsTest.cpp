#include <gtest/gtest.h>

#include <unordered_set>
#include <vector>

#include "lid/LidClosePrecaution.h"
#include "lid/OnlineDisplayList.h"
#include "lid/ProvidingPowerSource.h"
#include "lid/StaticMachineConditions.h"

namespace wakeloft {
namespace {

constexpr MachineConditionsSnapshot builtInOnlyOnBattery{.isOnBattery = true, .hasExternalDisplay = false};
constexpr MachineConditionsSnapshot externalOnBattery{.isOnBattery = true, .hasExternalDisplay = true};
constexpr MachineConditionsSnapshot builtInOnlyOnPower{.isOnBattery = false, .hasExternalDisplay = false};

TEST(LidClosePrecautionTest, NoHeatPathOnlyWhileOnAndAcknowledged) {
  EXPECT_EQ(LidClosePrecaution::shown(true, true, builtInOnlyOnBattery), LidClosePrecaution::noHeatPath);
  EXPECT_EQ(LidClosePrecaution::shown(true, true, externalOnBattery), LidClosePrecaution::none);
  EXPECT_EQ(LidClosePrecaution::shown(true, true, builtInOnlyOnPower), LidClosePrecaution::none);
  // Off and acknowledged: nothing, whatever the machine.
  EXPECT_EQ(LidClosePrecaution::shown(false, true, builtInOnlyOnBattery), LidClosePrecaution::none);
}

TEST(LidClosePrecautionTest, UnacknowledgedWarningWinsOverEverything) {
  for (const bool isOn : {false, true}) {
    for (const auto& conditions : {builtInOnlyOnBattery, externalOnBattery, builtInOnlyOnPower}) {
      EXPECT_EQ(LidClosePrecaution::shown(isOn, false, conditions), LidClosePrecaution::beforeFirstUse);
    }
  }
}

TEST(MachineConditionsTest, SnapshotReadsBothFacts) {
  EXPECT_EQ(StaticMachineConditions(true, false).snapshot(), builtInOnlyOnBattery);
  EXPECT_EQ(StaticMachineConditions(true, true).snapshot(), externalOnBattery);
}

TEST(ProvidingPowerSourceTest, OnlyBatteryPowerCountsAsOnBattery) {
  EXPECT_TRUE(ProvidingPowerSource::isBattery("Battery Power"));
  EXPECT_FALSE(ProvidingPowerSource::isBattery("AC Power"));
  EXPECT_FALSE(ProvidingPowerSource::isBattery("UPS Power"));
  // No power information at all: no heat warning on a guess.
  EXPECT_FALSE(ProvidingPowerSource::isBattery(std::nullopt));
}

class OnlineDisplayListTest : public ::testing::Test {
 protected:
  bool hasExternal(bool listed, std::uint32_t count) {
    return OnlineDisplayList::hasExternalDisplay(listed, ids, count, [this](OnlineDisplayList::DisplayID id) {
      examined.push_back(id);
      return builtIn.contains(id);
    });
  }

  OnlineDisplayList::IDs ids{};
  std::unordered_set<OnlineDisplayList::DisplayID> builtIn{1};
  std::vector<OnlineDisplayList::DisplayID> examined;
};

TEST_F(OnlineDisplayListTest, FailedListCallAssumesADisplay) {
  EXPECT_TRUE(hasExternal(false, 0));
  EXPECT_TRUE(examined.empty());
}

TEST_F(OnlineDisplayListTest, BuiltInOnlyOrEmptyHasNoExternalDisplay) {
  EXPECT_FALSE(hasExternal(true, 0));
  ids[0] = 1;
  EXPECT_FALSE(hasExternal(true, 1));
}

TEST_F(OnlineDisplayListTest, AnyDisplayNotBuiltInIsExternal) {
  ids[0] = 1;
  ids[1] = 7;
  EXPECT_TRUE(hasExternal(true, 2));
  // A lid closed with an external display: no built-in display listed at all.
  ids[0] = 7;
  EXPECT_TRUE(hasExternal(true, 1));
}

TEST_F(OnlineDisplayListTest, OnlyTheFirstThirtyTwoAreExamined) {
  ids.fill(1);
  EXPECT_FALSE(hasExternal(true, 33));
  EXPECT_EQ(examined.size(), 32u);
}

}  // namespace
}  // namespace wakeloft
