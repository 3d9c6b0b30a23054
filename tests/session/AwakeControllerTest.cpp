#include "session/AwakeController.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <thread>

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
  std::unique_ptr<AwakeController> make(bool restoring = true) {
    auto controller = std::make_unique<AwakeController>(blocker, store, clocks.dates, clocks.continuous, scheduler,
                                                        recheck, restoring);
    controller->observeSession([this] { ++sessionCalls; });
    return controller;
  }
  Date now() const { return clocks.now(); }
  AwakeIntent saved() const { return *store->stored.readable(); }

  ManualMachineClocks clocks;
  std::shared_ptr<InMemorySleepBlocker> blocker = std::make_shared<InMemorySleepBlocker>();
  std::shared_ptr<InMemoryAwakeIntentStore> store = std::make_shared<InMemoryAwakeIntentStore>();
  std::shared_ptr<ManualDeadlineScheduler> scheduler = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<ManualRecheckNotifier> recheck = std::make_shared<ManualRecheckNotifier>();
  int sessionCalls = 0;
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

TEST_F(AwakeControllerTest, ATimerOutlivingItsControllerNeitherReleasesNorForgetsTheSession) {
  auto awake = make();
  awake->turnOn(60.0);
  awake.reset();
  clocks.pass(60);
  scheduler->fire();
  recheck->post();
  EXPECT_EQ(saved(), AwakeIntent::until(now()));
  EXPECT_EQ(blocker->releaseCalls, 0);
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

// That a refused start keeps the request and its failure is the panel's test.
TEST_F(AwakeControllerTest, AfterARefusedStartTheNextToggleRetries) {
  auto awake = make();
  blocker->nextRefusal = -536870212;
  awake->toggle();
  awake->toggle();
  EXPECT_TRUE(awake->isOn());
  EXPECT_EQ(awake->lastFailure(), std::nullopt);
}

TEST_F(AwakeControllerTest, ARefusedTimedSessionStillEndsOnTime) {
  auto awake = make();
  blocker->nextRefusal = 1;
  awake->turnOn(60.0);
  clocks.pass(60);
  scheduler->fire();
  EXPECT_FALSE(awake->isRequested());
  EXPECT_EQ(blocker->releaseCalls, 0);
}

TEST_F(AwakeControllerTest, ChangingTheLengthKeepsTheSameAssertion) {
  auto awake = make();
  awake->turnOn(std::nullopt);
  awake->turnOn(3600.0);
  awake->turnOn(std::nullopt);
  EXPECT_FALSE(scheduler->pending.has_value());
  EXPECT_EQ(blocker->engageCalls, 1);
}

// Which lengths cannot be a deadline is AwakeIntent's own test.
TEST_F(AwakeControllerTest, ALengthThatCannotBeADeadlineTurnsTheSessionOff) {
  auto awake = make();
  awake->turnOn(std::nullopt);
  awake->turnOn(std::numeric_limits<double>::infinity());
  EXPECT_FALSE(awake->isRequested());
  EXPECT_EQ(saved(), AwakeIntent::off());
}

TEST_F(AwakeControllerTest, ObserversHearNoStopOfNothingButDoHearADeadlineAppear) {
  auto awake = make();
  int changes = 0;
  const auto subscription = awake->observe([&] { ++changes; });
  awake->turnOff();
  EXPECT_EQ(changes, 0);
  awake->turnOn(std::nullopt);
  const int afterStart = changes;
  awake->turnOn(60.0);  // a deadline appears: endsAt readers must hear of it
  EXPECT_GT(changes, afterStart);
}

TEST_F(AwakeControllerTest, SessionObserversAreToldOfEveryStopAndStartInTheOrderTheyCame) {
  auto awake = make();
  std::vector<std::string> seen;
  awake->observeSession([&] { seen.push_back(awake->isOn() ? "first on" : "first off"); });
  awake->observeSession([&] { seen.push_back(awake->isOn() ? "second on" : "second off"); });
  awake->turnOff();
  awake->toggle();
  EXPECT_EQ(seen, (std::vector<std::string>{"first off", "second off", "first on", "second on"}));
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

TEST_F(AwakeControllerTest, WithoutRestoringAStoredSessionIsRequestedButLeftAsItIs) {
  store->stored = StoredAwakeIntent::unreadableDeadline();
  auto awake = make(/*restoring=*/false);
  EXPECT_TRUE(awake->isRequested());
  EXPECT_FALSE(awake->isOn());
  EXPECT_EQ(store->stored, StoredAwakeIntent::unreadableDeadline());
}

using AwakeControllerDeathTest = AwakeControllerTest;

TEST_F(AwakeControllerDeathTest, ContinuousDeadlineOffTheMainThreadStopsTheProgram) {
  auto awake = make();
  EXPECT_DEATH({ std::thread([&] { awake->turnOn(60.0); }).join(); }, "must run on the main thread");
}

}  // namespace
}  // namespace wakeloft
