#include "session/IOKitSleepBlocker.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "session/AwakeFailure.h"
#include "session/SleepBlockerError.h"
#include "support/RecordingPowerAssertions.h"

namespace wakeloft {
namespace {

constexpr std::int32_t ioReturnError = -536870212;  // kIOReturnError
constexpr std::int32_t ioReturnNotFound = -536870160;  // kIOReturnNotFound

using testing::RecordingPowerAssertions;

struct IOKitSleepBlockerTest : ::testing::Test {
  std::shared_ptr<RecordingPowerAssertions> system = std::make_shared<RecordingPowerAssertions>();
};

TEST_F(IOKitSleepBlockerTest, EngagingTwiceHoldsOneAssertionUntilReleased) {
  IOKitSleepBlocker blocker(system, IOKitSleepBlocker::appReason);
  EXPECT_FALSE(blocker.isEngaged());
  blocker.release();  // nothing held: nothing to call

  blocker.engage();
  blocker.engage();

  ASSERT_EQ(system->creations.size(), 1u);
  EXPECT_EQ(system->creations[0].type, "PreventUserIdleSystemSleep");
  EXPECT_EQ(system->creations[0].level, 255u);
  EXPECT_EQ(system->creations[0].name, "Wakeloft is keeping this Mac awake");
  EXPECT_TRUE(blocker.isEngaged());
  EXPECT_EQ(blocker.assertionID(), 41u);

  blocker.release();
  blocker.release();
  EXPECT_EQ(system->releases, std::vector<std::uint32_t>{41});
  EXPECT_FALSE(blocker.isEngaged());
  EXPECT_EQ(blocker.assertionID(), std::nullopt);
}

TEST_F(IOKitSleepBlockerTest, ARefusedCreationHoldsNothingARefusedReleaseStillLetsGoAndEndingTheBlockerReleasesWhatItHolds) {
  {
    IOKitSleepBlocker blocker(system, "reason");
    system->createCode = ioReturnError;
    try {
      blocker.engage();
      FAIL() << "engage should have failed";
    } catch (const SleepBlockerError& error) {
      EXPECT_EQ(error.assertionCode(), ioReturnError);
      EXPECT_EQ(AwakeFailure::from(error), AwakeFailure(AwakeFailure::AssertionRefused{ioReturnError}));
    }
    EXPECT_FALSE(blocker.isEngaged());
    EXPECT_EQ(blocker.assertionID(), std::nullopt);

    // A later attempt that the system grants holds the assertion.
    system->createCode = 0;
    blocker.engage();
    EXPECT_TRUE(blocker.isEngaged());
    EXPECT_EQ(system->creations.size(), 2u);
  }
  // Only the granted assertion was ever released, never the refused call's id.
  EXPECT_EQ(system->releases, std::vector<std::uint32_t>{41});

  {
    IOKitSleepBlocker blocker(system, "reason");
    system->releaseCode = ioReturnNotFound;
    blocker.engage();
    blocker.release();
    EXPECT_FALSE(blocker.isEngaged());

    blocker.engage();
    EXPECT_EQ(system->creations.size(), 4u);
    EXPECT_EQ(blocker.assertionID(), 43u);
    IOKitSleepBlocker idle(system, "reason");
  }
  EXPECT_EQ(system->releases, (std::vector<std::uint32_t>{41, 42, 43}));
}

}  // namespace
}  // namespace wakeloft
