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

TEST_F(AwakeControllerTest, ATimedSessionIsSavedArmedAndEndsOnTimeButATimerOutlivingItsControllerDoesNothing) {
  auto awake = make();
  const Date start = now();
  awake->turnOn(1800.0);

  EXPECT_TRUE(awake->isOn());
  EXPECT_EQ(saved(), AwakeIntent::until(start.adding(1800)));
  EXPECT_EQ(scheduler->pending, start.adding(1800));

  // A timer that fires early only re-arms at the end.
  clocks.pass(600);
  scheduler->fire();
  EXPECT_TRUE(awake->isOn());
  EXPECT_EQ(scheduler->pending, start.adding(1800));

  // Past the end the time left is none, never less, until the timer runs.
  clocks.pass(1230);
  EXPECT_EQ(awake->remaining(), 0);
  scheduler->fire();
  EXPECT_FALSE(awake->isOn());
  EXPECT_EQ(saved(), AwakeIntent::off());
  EXPECT_EQ(blocker->releaseCalls, 1);

  const Date end = now().adding(60);
  awake->turnOn(60.0);
  awake.reset();
  clocks.pass(60);
  scheduler->fire();
  recheck->post();
  EXPECT_EQ(saved(), AwakeIntent::until(end));
  EXPECT_EQ(blocker->releaseCalls, 1);  // dropping the controller releases nothing
}

TEST_F(AwakeControllerTest, AClockSetBackCannotStretchTheSessionButOneSetForwardOrASleepPastTheDeadlineEndsIt) {
  auto awake = make();
  const Date firstEnd = now().adding(1800);
  awake->turnOn(1800.0);

  clocks.setWallClock(-3600);
  recheck->post();

  // The continuous clock wins: the end stays at the same real moment, which
  // the wall clock now calls an hour later.
  EXPECT_TRUE(awake->isOn());
  EXPECT_EQ(awake->endsAt(), firstEnd.adding(-3600));
  EXPECT_EQ(scheduler->pending, firstEnd.adding(-3600));
  EXPECT_EQ(awake->activeUntil(), firstEnd);

  for (const bool sleeping : {false, true}) {
    blocker = std::make_shared<InMemorySleepBlocker>();
    auto ended = make();
    ended->turnOn(1800.0);
    if (sleeping) {
      clocks.sleep(1800);
    } else {
      clocks.setWallClock(3600);
    }
    recheck->post();
    EXPECT_FALSE(ended->isOn()) << (sleeping ? "slept past the end" : "clock set past the end");
  }
}

TEST_F(AwakeControllerTest, ARefusedStartKeepsTheRequestRetriesOnToggleAndStillEndsOnTime) {
  auto awake = make();
  blocker->nextRefusal = -536870212;
  awake->toggle();

  EXPECT_FALSE(awake->isOn());
  EXPECT_TRUE(awake->isRequested());
  EXPECT_EQ(awake->lastFailure(), AwakeFailure(AwakeFailure::AssertionRefused{-536870212}));
  EXPECT_EQ(saved(), AwakeIntent::indefinite());

  awake->toggle();
  EXPECT_TRUE(awake->isOn());
  EXPECT_EQ(awake->lastFailure(), std::nullopt);

  // A refused timed session still ends on time, whether started or restored.
  store->stored = StoredAwakeIntent::intent(AwakeIntent::off());
  blocker = std::make_shared<InMemorySleepBlocker>();
  awake = make();
  blocker->nextRefusal = 1;
  awake->turnOn(60.0);
  EXPECT_FALSE(awake->isOn());
  ASSERT_TRUE(scheduler->pending.has_value());

  clocks.pass(60);
  scheduler->fire();
  EXPECT_FALSE(awake->isRequested());
  EXPECT_EQ(awake->lastFailure(), std::nullopt);
  EXPECT_EQ(blocker->releaseCalls, 0);

  store->stored = StoredAwakeIntent::intent(AwakeIntent::until(now().adding(30)));
  blocker->nextRefusal = 7;
  awake = make();
  EXPECT_FALSE(awake->isOn());
  EXPECT_TRUE(awake->isRequested());
  EXPECT_EQ(saved(), AwakeIntent::until(now().adding(30)));  // not re-saved, not cleaned
  clocks.pass(30);
  recheck->post();
  EXPECT_FALSE(awake->isRequested());
}

TEST_F(AwakeControllerTest, ChangingTheLengthKeepsTheSameAssertionButOneThatCannotBeRepresentedTurnsItOff) {
  auto awake = make();
  awake->turnOn(std::nullopt);
  awake->turnOn(3600.0);
  EXPECT_EQ(blocker->engageCalls, 1);
  EXPECT_EQ(scheduler->pending, now().adding(3600));

  awake->turnOn(std::nullopt);
  EXPECT_EQ(awake->activeUntil(), std::nullopt);
  EXPECT_FALSE(scheduler->pending.has_value());
  EXPECT_EQ(saved(), AwakeIntent::indefinite());
  EXPECT_EQ(blocker->engageCalls, 1);

  awake->turnOn(std::numeric_limits<double>::infinity());
  EXPECT_FALSE(awake->isOn());
  EXPECT_EQ(saved(), AwakeIntent::off());

  awake->turnOn(std::nan(""));
  EXPECT_FALSE(awake->isRequested());
  awake->turnOn(Date::distantFuture().secondsSince(now()) + 1);
  EXPECT_FALSE(awake->isRequested());
  EXPECT_EQ(blocker->engageCalls, 1);

  // Zero or less starts a session that the timer ends at once.
  awake->turnOn(-5.0);
  EXPECT_TRUE(awake->isOn());
  EXPECT_EQ(scheduler->pending, now().adding(-5));
  scheduler->fire();
  EXPECT_FALSE(awake->isOn());
}

TEST_F(AwakeControllerTest, ObserversHearOnlyRealChangesAndSessionObserversTheNewStateInOrder) {
  auto awake = make();
  int changes = 0;
  const auto subscription = awake->observe([&] { ++changes; });

  // Nothing was on: off is still written and told, but nothing changed.
  store->stored = StoredAwakeIntent::intent(AwakeIntent::indefinite());
  awake->turnOff();
  EXPECT_EQ(changes, 0);
  EXPECT_EQ(saved(), AwakeIntent::off());
  EXPECT_EQ(blocker->releaseCalls, 0);
  EXPECT_EQ(sessionCalls, 1);

  awake->turnOn(std::nullopt);
  const int afterStart = changes;
  EXPECT_GT(afterStart, 0);
  awake->turnOn(std::nullopt);  // same state again
  EXPECT_EQ(changes, afterStart);

  awake->turnOn(60.0);  // a deadline appears: endsAt readers must hear of it
  EXPECT_GT(changes, afterStart);

  std::vector<std::string> seen;
  awake->observeSession([&] { seen.push_back(awake->isOn() ? "first on" : "first off"); });
  awake->observeSession([&] { seen.push_back(awake->isOn() ? "second on" : "second off"); });
  awake->toggle();
  awake->toggle();
  EXPECT_EQ(seen, (std::vector<std::string>{"first off", "second off", "first on", "second on"}));
}

TEST_F(AwakeControllerTest, AnAutomaticStartIsNeverStoredNorTakesOverARunningSessionAndAnyOtherStartIsTheUsers) {
  auto awake = make();
  awake->turnOnAutomatically();
  EXPECT_TRUE(awake->isOn() && awake->isAutomatic());
  EXPECT_EQ(saved(), AwakeIntent::off());
  awake->turnOn(600.0);
  awake->turnOnAutomatically();
  EXPECT_FALSE(awake->isAutomatic());
  EXPECT_EQ(saved(), AwakeIntent::until(now().adding(600)));
}

// Start-up: what each stored form does at launch.

TEST_F(AwakeControllerTest, LaunchRestoresASessionWithoutTimerOrWithAFutureDeadlineWithoutSavingItButCleansALapsedUnreadableOrUnusableOneWhenRestoring) {
  struct CountingStore final : AwakeIntentStore {
    StoredAwakeIntent load() const override { return StoredAwakeIntent::intent(AwakeIntent::indefinite()); }
    void save(const AwakeIntent&) override { ++saves; }
    int saves = 0;
  };
  auto counting = std::make_shared<CountingStore>();
  AwakeController awake(blocker, counting, clocks.dates, clocks.continuous, scheduler, recheck, true);
  EXPECT_TRUE(awake.isOn());
  EXPECT_EQ(awake.activeUntil(), std::nullopt);
  EXPECT_EQ(counting->saves, 0);

  const Date deadline = now().adding(900);
  store->stored = StoredAwakeIntent::intent(AwakeIntent::until(deadline));
  auto timed = make();
  EXPECT_TRUE(timed->isOn());
  EXPECT_EQ(scheduler->pending, deadline);

  const int engaged = blocker->engageCalls, released = blocker->releaseCalls;
  for (const auto stored : {StoredAwakeIntent::intent(AwakeIntent::until(now().adding(-1))),
                            StoredAwakeIntent::intent(AwakeIntent::until(now())),  // due now counts as lapsed
                            StoredAwakeIntent::unreadableDeadline(),
                            StoredAwakeIntent::intent(AwakeIntent::until(Date{INFINITY})),
                            StoredAwakeIntent::intent(AwakeIntent::until(Date::distantFuture().adding(1)))}) {
    store->stored = stored;
    auto cleaned = make();
    EXPECT_FALSE(cleaned->isRequested());
    EXPECT_EQ(saved(), AwakeIntent::off());
  }
  EXPECT_EQ(blocker->engageCalls, engaged);
  EXPECT_EQ(blocker->releaseCalls, released);

  store->stored = StoredAwakeIntent::unreadableDeadline();
  auto kept = make(/*restoring=*/false);
  EXPECT_TRUE(kept->isRequested());
  EXPECT_FALSE(kept->isOn());
  EXPECT_EQ(store->stored, StoredAwakeIntent::unreadableDeadline());
}

using AwakeControllerDeathTest = AwakeControllerTest;

TEST_F(AwakeControllerDeathTest, ContinuousDeadlineOffTheMainThreadStopsTheProgram) {
  auto awake = make();
  EXPECT_DEATH(
      {
        std::thread([&] { awake->turnOn(60.0); }).join();
      },
      "must run on the main thread");
}

}  // namespace
}  // namespace wakeloft
