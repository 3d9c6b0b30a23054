// An assertion the system let go of behind the blocker's back.

#include <gtest/gtest.h>

#include "session/IOKitSleepBlocker.h"
#include "session/SleepBlockerError.h"
#include "support/RecordingPowerAssertions.h"

namespace wakeloft {
namespace {

using testing::RecordingPowerAssertions;

TEST(IOKitSleepBlockerRestoreTest, OnlyADroppedAssertionIsCreatedAgainUnderItsOwnTypeAndName) {
  const auto system = std::make_shared<RecordingPowerAssertions>();
  IOKitSleepBlocker blocker(system, "reason", IOKitSleepBlocker::displayAssertionType);
  blocker.engage();
  blocker.restore();
  EXPECT_EQ(system->creations.size(), 1u);
  system->dropped.push_back(*blocker.assertionID());
  blocker.restore();
  ASSERT_EQ(system->creations.size(), 2u);
  EXPECT_EQ(system->creations[1].type, "PreventUserIdleDisplaySleep");
  EXPECT_EQ(system->creations[1].name, "reason");
  EXPECT_TRUE(system->releases.empty());
}

TEST(IOKitSleepBlockerRestoreTest, ARefusedRecreationThrowsAndHoldsNothing) {
  const auto system = std::make_shared<RecordingPowerAssertions>();
  IOKitSleepBlocker blocker(system, "reason");
  blocker.engage();
  system->dropped.push_back(*blocker.assertionID());
  system->createCode = -536870201;
  EXPECT_THROW(blocker.restore(), SleepBlockerError);
  EXPECT_FALSE(blocker.isEngaged());
}

}  // namespace
}  // namespace wakeloft
