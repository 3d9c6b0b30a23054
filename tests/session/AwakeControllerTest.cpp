#include "session/AwakeController.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "session/InMemoryAwakeIntentStore.h"
#include "session/InMemorySleepBlocker.h"
#include "support/ManualClocks.h"
#include "support/ManualScheduling.h"

namespace wakeloft {
namespace {

using testing::ManualDeadlineScheduler;
using testing::ManualMachineClocks;
using testing::ManualRecheckNotifier;

class AwakeControllerTest : public ::testing::Test {
 protected:
  std::unique_ptr<AwakeController> make() {
    return std::make_unique<AwakeController>(blocker, store, clocks.dates, clocks.continuous, scheduler, recheck,
                                             /*restoringPreviousState=*/true);
  }
  Date now() const { return clocks.now(); }
  AwakeIntent saved() const { return *store->stored.readable(); }

  ManualMachineClocks clocks;
  std::shared_ptr<InMemorySleepBlocker> blocker = std::make_shared<InMemorySleepBlocker>();
  std::shared_ptr<InMemoryAwakeIntentStore> store = std::make_shared<InMemoryAwakeIntentStore>();
  std::shared_ptr<ManualDeadlineScheduler> scheduler = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<ManualRecheckNotifier> recheck = std::make_shared<ManualRecheckNotifier>();
};

TEST_F(AwakeControllerTest, ATimedSessionIsSavedAndEndsWhenTheTimerFiresAtItsDeadline) {
  auto awake = make();
  const Date end = now().adding(1800);
  awake->turnOn(1800.0);
  EXPECT_EQ(saved(), AwakeIntent::until(end));
  EXPECT_EQ(scheduler->pending, end);

  clocks.pass(1800);
  scheduler->fire();
  EXPECT_FALSE(awake->isOn());
  EXPECT_EQ(saved(), AwakeIntent::off());
  EXPECT_EQ(blocker->releaseCalls, 1);
}

TEST_F(AwakeControllerTest, ATimerFiringEarlyOnlyReArmsAtTheEnd) {
  auto awake = make();
  const Date end = now().adding(1800);
  awake->turnOn(1800.0);
  clocks.pass(600);
  scheduler->fire();
  EXPECT_TRUE(awake->isOn());
  EXPECT_EQ(scheduler->pending, end);
}

TEST_F(AwakeControllerTest, PastTheEndTheTimeLeftIsNoneNeverLess) {
  auto awake = make();
  awake->turnOn(60.0);
  clocks.pass(90);
  EXPECT_EQ(awake->remaining(), 0);
}

TEST_F(AwakeControllerTest, AClockSetBackCannotStretchTheSession) {
  auto awake = make();
  const Date end = now().adding(1800);
  awake->turnOn(1800.0);
  clocks.setWallClock(-3600);
  recheck->post();
  // The same real moment, which the wall clock now calls an hour earlier.
  EXPECT_EQ(awake->endsAt(), end.adding(-3600));
  EXPECT_EQ(scheduler->pending, end.adding(-3600));
}

TEST_F(AwakeControllerTest, AClockSetForwardOrASleepPastTheDeadlineEndsTheSessionAtTheRecheck) {
  for (const bool sleeping : {false, true}) {
    SCOPED_TRACE(sleeping ? "slept past the end" : "clock set past the end");
    auto awake = make();
    awake->turnOn(1800.0);
    if (sleeping) {
      clocks.sleep(1800);
    } else {
      clocks.setWallClock(3600);
    }
    recheck->post();
    EXPECT_FALSE(awake->isOn());
  }
}

// Which lengths cannot be a deadline is AwakeIntent's own test.
TEST_F(AwakeControllerTest, ALengthThatCannotBeADeadlineTurnsTheSessionOff) {
  auto awake = make();
  awake->turnOn(std::nullopt);
  awake->turnOn(std::numeric_limits<double>::infinity());
  EXPECT_FALSE(awake->isRequested());
  EXPECT_EQ(saved(), AwakeIntent::off());
}

// That an automatic start is never stored is the automatic session's test.
TEST_F(AwakeControllerTest, AnAutomaticStartNeverTakesOverTheUsersSession) {
  auto awake = make();
  awake->turnOn(600.0);
  awake->turnOnAutomatically();
  EXPECT_FALSE(awake->isAutomatic());
  EXPECT_EQ(awake->activeUntil(), now().adding(600));
}

TEST_F(AwakeControllerTest, LaunchRestoresAFutureDeadlineWithItsTimer) {
  const Date deadline = now().adding(900);
  store->stored = StoredAwakeIntent::intent(AwakeIntent::until(deadline));
  auto awake = make();
  EXPECT_TRUE(awake->isOn());
  EXPECT_EQ(scheduler->pending, deadline);
}

TEST_F(AwakeControllerTest, LaunchCleansALapsedUnreadableOrUnusableSessionWithoutEngaging) {
  for (const auto stored :
       {StoredAwakeIntent::intent(AwakeIntent::until(now())),  // due now counts as lapsed
        StoredAwakeIntent::unreadableDeadline(), StoredAwakeIntent::intent(AwakeIntent::until(Date{INFINITY}))}) {
    store->stored = stored;
    EXPECT_FALSE(make()->isRequested());
    EXPECT_EQ(saved(), AwakeIntent::off());
  }
  EXPECT_EQ(blocker->engageCalls, 0);
}

}  // namespace
}  // namespace wakeloft
