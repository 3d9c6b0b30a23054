#include "lid/LidAwakeController.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "lid/InMemoryLidAwakeStore.h"
#include "lid/InMemoryLidSleepBlocker.h"
#include "lid/LidSleepBlockerError.h"
#include "session/InMemoryAwakeIntentStore.h"
#include "session/InMemorySleepBlocker.h"
#include "support/ManualClocks.h"
#include "support/ManualMachineConditions.h"
#include "support/ManualScheduling.h"

namespace wakeloft {
namespace {

using testing::ManualDeadlineScheduler;

std::exception_ptr unavailable() { return std::make_exception_ptr(LidSleepBlockerError::helperUnavailable()); }
std::exception_ptr requiresApproval() {
  return std::make_exception_ptr(LidSleepBlockerError::helperRequiresApproval());
}

const AwakeFailure helperUnavailable = AwakeFailure::LidHelperUnavailable{};
const AwakeFailure helperRequiresApproval = AwakeFailure::LidHelperRequiresApproval{};

class LidAwakeControllerTest : public ::testing::Test {
 protected:
  std::unique_ptr<LidAwakeController> make() {
    return std::make_unique<LidAwakeController>(awake, lid, store, machine, notifier, clocks.dates, leaseTimer,
                                                sessionEnd, guardrails);
  }
  // Turned on through the panel's switch and confirmed by the helper.
  std::unique_ptr<LidAwakeController> makeOn(std::optional<double> length = 7200) {
    auto controller = make();
    EXPECT_TRUE(controller->turnOnJoiningSessionOr(length) && controller->isOn());
    return controller;
  }
  // On, then switched off with a give-back the helper does not confirm.
  std::unique_ptr<LidAwakeController> makeWithUnconfirmedReset() {
    auto controller = makeOn();
    lid->nextRevocationError = unavailable();
    controller->turnOff();
    return controller;
  }
  // A change the system announces.
  void change(const std::function<void(MachineConditionsSnapshot&)>& edit) {
    edit(machine->current);
    notifier->post();
  }
  Date now() const { return clocks.now(); }

  testing::ManualMachineClocks clocks;
  std::shared_ptr<InMemorySleepBlocker> assertion = std::make_shared<InMemorySleepBlocker>();
  std::shared_ptr<AwakeController> awake = std::make_shared<AwakeController>(
      assertion, std::make_shared<InMemoryAwakeIntentStore>(), clocks.dates, clocks.continuous,
      std::make_shared<ManualDeadlineScheduler>(), std::make_shared<testing::ManualRecheckNotifier>(),
      /*restoringPreviousState=*/false);
  std::shared_ptr<InMemoryLidSleepBlocker> lid = std::make_shared<InMemoryLidSleepBlocker>();
  std::shared_ptr<InMemoryLidAwakeStore> store = std::make_shared<InMemoryLidAwakeStore>(true);
  std::shared_ptr<testing::SettableMachineConditions> machine = std::make_shared<testing::SettableMachineConditions>();
  std::shared_ptr<testing::ManualConditionsNotifier> notifier = std::make_shared<testing::ManualConditionsNotifier>();
  std::shared_ptr<ManualDeadlineScheduler> leaseTimer = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<ManualDeadlineScheduler> sessionEnd = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<InMemoryDeepwakeGuardrailStore> guardrails = std::make_shared<InMemoryDeepwakeGuardrailStore>();
};

TEST_F(LidAwakeControllerTest, ARefusedAssertionIsTheFailureAndAsksForNoLease) {
  auto controller = make();
  assertion->nextRefusal = -536870199;
  EXPECT_FALSE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_EQ(controller->lastFailure(), AwakeFailure(AwakeFailure::AssertionRefused{-536870199}));
  EXPECT_TRUE(lid->unanswered.empty());
}

TEST_F(LidAwakeControllerTest, QuickTurnOnsSendOneRenewalAndTheLeaseOfThirtySecondsIsRenewedEveryTen) {
  lid->holdsReplies = true;
  auto controller = make();
  const Date start = now();
  EXPECT_TRUE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_TRUE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_EQ(lid->unanswered.size(), 1u);
  EXPECT_FALSE(controller->isOn());

  lid->answerNext();
  EXPECT_EQ(lid->leaseExpiry, start.adding(30));
  clocks.pass(10);
  leaseTimer->fire();
  lid->answerNext();
  EXPECT_EQ(lid->leaseExpiry, start.adding(40));
  EXPECT_EQ(leaseTimer->pending, start.adding(20));
}

TEST_F(LidAwakeControllerTest, JoiningKeepsTheRunningSessionUnlessItLapsedWhileTurnOnReplacesIt) {
  const Date start = now();
  awake->turnOn(1800.0);
  auto controller = make();
  EXPECT_TRUE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_EQ(sessionEnd->pending, start.adding(1800));

  EXPECT_TRUE(controller->turnOn(3600.0));
  EXPECT_EQ(sessionEnd->pending, start.adding(3600));

  awake->turnOn(60.0);
  clocks.pass(61);  // its timer has not fired yet
  EXPECT_TRUE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_EQ(awake->activeUntil(), now().adding(7200));
}

TEST_F(LidAwakeControllerTest, TurnOffGivesBackOnlyALeaseItHoldsOnceAndStopsRenewing) {
  make()->turnOff();
  EXPECT_EQ(lid->revokeCount, 0);

  auto controller = makeOn();
  controller->turnOff();
  controller->turnOff();
  EXPECT_EQ(lid->revokeCount, 1);
  EXPECT_EQ(leaseTimer->pending, std::nullopt);
}

TEST_F(LidAwakeControllerTest, ARenewalAnsweredAfterTurnOffChangesNothing) {
  lid->holdsReplies = true;
  lid->nextRenewalError = unavailable();
  auto controller = make();
  ASSERT_TRUE(controller->turnOnJoiningSessionOr(7200));
  controller->turnOff();
  lid->answerAll();
  EXPECT_FALSE(controller->isOn());
  EXPECT_EQ(controller->lastFailure(), std::nullopt);
  EXPECT_EQ(lid->revokeCount, 1);  // no second give-back for the stale failure
}

TEST_F(LidAwakeControllerTest, AFailedLaterRenewalTurnsDeepwakeOffGivesBackAndIsNotRetried) {
  auto controller = makeOn();
  lid->nextRenewalError = unavailable();
  clocks.pass(10);
  leaseTimer->fire();
  EXPECT_FALSE(controller->isOn());
  EXPECT_EQ(lid->revokeCount, 1);
  EXPECT_EQ(controller->lastFailure(), helperUnavailable);

  controller->checkLease();
  EXPECT_EQ(lid->renewCount, 1);
}

TEST_F(LidAwakeControllerTest, TheSessionsEndEndsDeepwakeWhicheverTimerSeesItFirst) {
  const std::vector<std::pair<const char*, std::function<void()>>> ends = {
      {"Deepwake's own timer, fired early first",
       [&] {
         clocks.pass(900);  // the clock was moved: only re-armed
         sessionEnd->fire();
         EXPECT_TRUE(lid->isEngaged());
         clocks.pass(900);
         sessionEnd->fire();
       }},
      {"the lease check",
       [&] {
         clocks.pass(1800);
         leaseTimer->fire();
       }},
  };
  for (const auto& [name, end] : ends) {
    SCOPED_TRACE(name);
    const int revokes = lid->revokeCount, renewals = lid->renewCount;
    auto controller = makeOn(1800);
    end();
    EXPECT_EQ(lid->revokeCount, revokes + 1);
    EXPECT_EQ(lid->renewCount, renewals + 1);  // nothing renewed past the end
  }
}

TEST_F(LidAwakeControllerTest, LengtheningOrShorteningTheSessionMovesDeepwakesEnd) {
  const Date start = now();
  auto controller = makeOn(1800);
  awake->turnOn(5400.0);
  EXPECT_EQ(sessionEnd->pending, start.adding(5400));
  awake->turnOn(600.0);
  EXPECT_EQ(sessionEnd->pending, start.adding(600));
}

TEST_F(LidAwakeControllerTest, AnUnconfirmedResetLastsUntilARetriedGiveBackOrARenewalIsConfirmed) {
  for (const bool renewing : {false, true}) {
    SCOPED_TRACE(renewing ? "renewal" : "turned off again");
    auto controller = makeWithUnconfirmedReset();
    EXPECT_EQ(controller->lastFailure(), helperUnavailable);
    if (renewing) {
      EXPECT_TRUE(controller->turnOnJoiningSessionOr(7200));
    } else {
      controller->turnOff();
    }
    EXPECT_EQ(controller->lastFailure(), std::nullopt);
  }
}

TEST_F(LidAwakeControllerTest, AFailureToPrepareWhileAResetIsUnconfirmedIsNotRecorded) {
  auto controller = makeWithUnconfirmedReset();
  lid->nextPreparationError = requiresApproval();
  EXPECT_FALSE(controller->turnOnJoiningSessionOr(7200));
  controller->checkLease();  // confirms the give-back
  EXPECT_EQ(controller->lastFailure(), std::nullopt);
}

TEST_F(LidAwakeControllerTest, AnUnconfirmedResetOutranksAFailedRenewal) {
  auto controller = makeWithUnconfirmedReset();
  lid->holdsReplies = true;
  lid->nextRenewalError = requiresApproval();
  ASSERT_TRUE(controller->turnOnJoiningSessionOr(7200));
  lid->answerNext();  // the renewal fails; its give-back is held
  EXPECT_EQ(controller->lastFailure(), helperUnavailable);
}

TEST_F(LidAwakeControllerTest, ARefusedRetryReplacesTheReasonForAnUnconfirmedResetAndAVaguerOneKeepsIt) {
  auto controller = makeWithUnconfirmedReset();
  const auto notPutBack = LidHelperRefusal::settingNotPutBack("busy");
  lid->nextRevocationError = std::make_exception_ptr(LidSleepBlockerError::helperRefused(notPutBack.reason()));
  controller->checkLease();
  const AwakeFailure refused = AwakeFailure::LidHelperRefused{notPutBack};
  EXPECT_EQ(controller->lastFailure(), refused);

  lid->nextRevocationError = requiresApproval();
  controller->checkLease();
  EXPECT_EQ(controller->lastFailure(), refused);
}

TEST_F(LidAwakeControllerTest, AnUnconfirmedResetIsRetriedOneAtATime) {
  auto controller = makeWithUnconfirmedReset();
  lid->holdsReplies = true;
  controller->checkLease();
  controller->checkLease();
  controller->turnOff();
  EXPECT_EQ(lid->unanswered.size(), 1u);
}

using Stop = DeepwakeGuardrails::Stop;
using Rule = Stop::Rule;

// Which rule holds when is DeepwakeGuardrails' own test.
TEST_F(LidAwakeControllerTest, ARuleComingToHoldEndsDeepwakeAndItsLeaseButNotTheSession) {
  machine->current = {.isOnBattery = true, .batteryCharge = 21};
  auto controller = makeOn();
  change([](auto& c) { c.batteryCharge = 20; });
  EXPECT_EQ(controller->guardrailStop(), (Stop{Rule::batteryFloor, 20}));
  EXPECT_FALSE(lid->isEngaged());
  EXPECT_TRUE(awake->isOn());
}

TEST_F(LidAwakeControllerTest, TurningOnWhileARuleHoldsIsRefusedWithTheRule) {
  machine->current = {.isOnBattery = true, .batteryCharge = 10};
  auto controller = make();
  EXPECT_FALSE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_EQ(controller->guardrailStop(), (Stop{Rule::batteryFloor, 20, /*whenTurningOn=*/true}));
  EXPECT_FALSE(awake->isRequested());
  EXPECT_EQ(lid->prepareCount, 0);
}

TEST_F(LidAwakeControllerTest, OnlyOnPowerPausesOnBatteryHoldingNoLeaseAndTakesItAgainWithPower) {
  guardrails->setSettings({.onlyOnPowerAdapter = true});
  auto controller = makeOn();
  change([](auto& c) { c.isOnBattery = true; });
  EXPECT_TRUE(controller->isPausedForPower());
  EXPECT_FALSE(lid->isEngaged());
  leaseTimer->fire();
  EXPECT_EQ(lid->renewCount, 1);

  change([](auto& c) { c.isOnBattery = false; });
  EXPECT_TRUE(controller->isOn());
  EXPECT_EQ(lid->renewCount, 2);
}

TEST_F(LidAwakeControllerTest, ARuleComingOnWhilePausedForPowerIsJudgedWhenPowerReturns) {
  guardrails->setSettings({.onlyOnPowerAdapter = true});
  auto controller = makeOn();
  change([](auto& c) { c.isOnBattery = true; });
  change([](auto& c) { c.thermalState = ThermalState::critical; });
  EXPECT_EQ(controller->guardrailStop(), std::nullopt);
  change([](auto& c) { c.isOnBattery = false; });
  EXPECT_EQ(controller->guardrailStop(), Stop{Rule::criticalHeat});
  EXPECT_FALSE(controller->isWanted());
}

}  // namespace
}  // namespace wakeloft
