#include "session/IOKitSleepBlocker.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "session/SleepBlockerError.h"
#include "support/RecordingPowerAssertions.h"

namespace wakeloft {
namespace {

constexpr std::int32_t ioReturnError = -536870212;     // kIOReturnError
constexpr std::int32_t ioReturnNotFound = -536870160;  // kIOReturnNotFound

using testing::RecordingPowerAssertions;

struct IOKitSleepBlockerTest : ::testing::Test {
  std::shared_ptr<RecordingPowerAssertions> system = std::make_shared<RecordingPowerAssertions>();
};

TEST_F(IOKitSleepBlockerTest, EngagingTwiceAsksForOneIdleSleepAssertionAndReleasingTwiceReleasesItOnce) {
  IOKitSleepBlocker blocker(system, IOKitSleepBlocker::appReason);
  blocker.engage();
  blocker.engage();
  ASSERT_EQ(system->creations.size(), 1u);
  EXPECT_EQ(system->creations[0].type, "PreventUserIdleSystemSleep");
  EXPECT_EQ(system->creations[0].level, 255u);
  EXPECT_EQ(system->creations[0].name, "Wakeloft is keeping this Mac awake");
  blocker.release();
  blocker.release();
  EXPECT_EQ(system->releases, std::vector<std::uint32_t>{41});
}

TEST_F(IOKitSleepBlockerTest, ARefusedCreationThrowsItsCodeAndHoldsNothingToRelease) {
  IOKitSleepBlocker blocker(system, "reason");
  system->createCode = ioReturnError;
  try {
    blocker.engage();
    ADD_FAILURE() << "engage should have failed";
  } catch (const SleepBlockerError& error) {
    EXPECT_EQ(error.assertionCode(), ioReturnError);
  }
  blocker.release();
  EXPECT_TRUE(system->releases.empty());
}

TEST_F(IOKitSleepBlockerTest, ARefusedReleaseStillLetsGoOfTheAssertion) {
  IOKitSleepBlocker blocker(system, "reason");
  system->releaseCode = ioReturnNotFound;
  blocker.engage();
  blocker.release();
  EXPECT_FALSE(blocker.isEngaged());
}

TEST_F(IOKitSleepBlockerTest, EndingTheBlockerReleasesWhatItHolds) {
  { IOKitSleepBlocker(system, "reason").engage(); }
  EXPECT_EQ(system->releases, std::vector<std::uint32_t>{41});
}

TEST_F(IOKitSleepBlockerTest, OnlyADroppedAssertionIsCreatedAgainUnderItsOwnTypeAndName) {
  IOKitSleepBlocker blocker(system, "reason", IOKitSleepBlocker::displayAssertionType);
  blocker.engage();
  blocker.restore();
  EXPECT_EQ(system->creations.size(), 1u);
  const auto dropped = *blocker.assertionID();
  system->dropped.push_back(dropped);
  blocker.restore();
  ASSERT_EQ(system->creations.size(), 2u);
  EXPECT_EQ(system->creations[1].type, "PreventUserIdleDisplaySleep");
  EXPECT_EQ(system->creations[1].name, "reason");
  // Given back in case the system still counts it.
  EXPECT_EQ(system->releases, std::vector<std::uint32_t>{dropped});
}

TEST_F(IOKitSleepBlockerTest, ARefusedRecreationThrowsAndHoldsNothing) {
  IOKitSleepBlocker blocker(system, "reason");
  blocker.engage();
  system->dropped.push_back(*blocker.assertionID());
  system->createCode = ioReturnError;
  EXPECT_THROW(blocker.restore(), SleepBlockerError);
  EXPECT_FALSE(blocker.isEngaged());
}

}  // namespace
}  // namespace wakeloft
