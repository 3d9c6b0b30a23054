#include "lid/LidAwakeController.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
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

using testing::ManualConditionsNotifier;
using testing::ManualDeadlineScheduler;
using testing::ManualMachineClocks;
using testing::ManualRecheckNotifier;
using testing::SettableMachineConditions;

std::exception_ptr refused(std::string_view reason) {
  return std::make_exception_ptr(LidSleepBlockerError::helperRefused(std::string(reason)));
}
std::exception_ptr unavailable() { return std::make_exception_ptr(LidSleepBlockerError::helperUnavailable()); }
std::exception_ptr requiresApproval() {
  return std::make_exception_ptr(LidSleepBlockerError::helperRequiresApproval());
}

const AwakeFailure helperUnavailable = AwakeFailure::LidHelperUnavailable{};
const AwakeFailure helperRequiresApproval = AwakeFailure::LidHelperRequiresApproval{};
AwakeFailure helperRefused(LidHelperRefusal refusal) { return AwakeFailure::LidHelperRefused{std::move(refusal)}; }

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
  std::unique_ptr<LidAwakeController> makeWithUnconfirmedReset(std::exception_ptr revokeError = unavailable()) {
    auto controller = makeOn();
    lid->nextRevocationError = std::move(revokeError);
    controller->turnOff();
    return controller;
  }
  Date now() const { return clocks.now(); }
  std::size_t held() const { return lid->unanswered.size(); }

  ManualMachineClocks clocks;
  std::shared_ptr<InMemorySleepBlocker> assertion = std::make_shared<InMemorySleepBlocker>();
  std::shared_ptr<AwakeController> awake = std::make_shared<AwakeController>(
      assertion, std::make_shared<InMemoryAwakeIntentStore>(), clocks.dates, clocks.continuous,
      std::make_shared<ManualDeadlineScheduler>(),
      std::make_shared<ManualRecheckNotifier>(), /*restoringPreviousState=*/false);
  std::shared_ptr<InMemoryLidSleepBlocker> lid = std::make_shared<InMemoryLidSleepBlocker>();
  std::shared_ptr<InMemoryLidAwakeStore> store = std::make_shared<InMemoryLidAwakeStore>(true);
  std::shared_ptr<SettableMachineConditions> machine = std::make_shared<SettableMachineConditions>();
  std::shared_ptr<ManualConditionsNotifier> notifier = std::make_shared<ManualConditionsNotifier>();
  std::shared_ptr<ManualDeadlineScheduler> leaseTimer = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<ManualDeadlineScheduler> sessionEnd = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<InMemoryDeepwakeGuardrailStore> guardrails = std::make_shared<InMemoryDeepwakeGuardrailStore>();
};

// --- The heat-warning gate and refused starts ---

TEST_F(LidAwakeControllerTest, BeforeTheHeatWarningIsAcknowledgedNothingStarts) {
  store->acknowledged = false;
  auto controller = make();
  EXPECT_EQ(controller->refusal(), LidAwakeRefusal::unacknowledged);
  EXPECT_FALSE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_FALSE(controller->turnOn(std::nullopt));
  EXPECT_FALSE(awake->isRequested());
  EXPECT_EQ(lid->prepareCount, 0);
  EXPECT_EQ(controller->lastFailure(), std::nullopt);  // a refusal is not a failure
}

TEST_F(LidAwakeControllerTest, AnAcknowledgementIsStoredOrPickedUpByARefreshWithOneChange) {
  store->acknowledged = false;
  auto controller = make();
  controller->acknowledgeHeatWarning();
  EXPECT_TRUE(store->acknowledged);
  EXPECT_TRUE(controller->turnOnJoiningSessionOr(7200));

  store->acknowledged = false;
  controller = make();
  int changes = 0;
  auto subscription = controller->observe([&] { ++changes; });
  store->acknowledged = true;  // elsewhere
  controller->refresh();
  controller->refresh();
  EXPECT_TRUE(controller->hasAcknowledgedHeatWarning());
  EXPECT_EQ(changes, 1);
}

TEST_F(LidAwakeControllerTest, AnUnusableLengthAHelperNotPreparedOrARefusedSessionStartsNothing) {
  auto controller = make();
  // The length is refused before anything happens.
  EXPECT_FALSE(controller->turnOn(std::numeric_limits<double>::infinity()));
  EXPECT_FALSE(controller->turnOnJoiningSessionOr(std::numeric_limits<double>::quiet_NaN()));
  EXPECT_EQ(lid->prepareCount, 0);
  EXPECT_EQ(controller->lastFailure(), std::nullopt);

  lid->nextPreparationError = requiresApproval();
  EXPECT_FALSE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_EQ(controller->lastFailure(), helperRequiresApproval);
  EXPECT_FALSE(awake->isRequested());

  assertion->nextRefusal = -536870199;
  EXPECT_FALSE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_EQ(controller->lastFailure(), AwakeFailure(AwakeFailure::AssertionRefused{-536870199}));
  EXPECT_EQ(held(), 0u);
}

// --- Turning on and keeping the lease ---

TEST_F(LidAwakeControllerTest, FirstRenewalOfQuickTurnOnsTurnsOnAndTheLeaseIsRenewedEveryTenSeconds) {
  lid->holdsReplies = true;
  auto controller = make();
  const Date start = now();

  EXPECT_TRUE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_TRUE(controller->turnOnJoiningSessionOr(7200));  // a second quick one sends nothing more
  EXPECT_EQ(held(), 1u);
  EXPECT_TRUE(controller->isTurningOn());
  EXPECT_FALSE(controller->isOn());
  EXPECT_EQ(sessionEnd->pending, start.adding(7200));

  lid->answerNext();
  EXPECT_TRUE(controller->isOn());
  EXPECT_EQ(lid->leaseExpiry, start.adding(30));
  EXPECT_EQ(leaseTimer->pending, start.adding(10));

  clocks.pass(10);
  leaseTimer->fire();
  EXPECT_TRUE(controller->isOn());  // still on while the renewal is out
  lid->answerNext();
  EXPECT_EQ(lid->leaseExpiry, start.adding(40));
  EXPECT_EQ(leaseTimer->pending, start.adding(20));
}

TEST_F(LidAwakeControllerTest, JoiningKeepsTheRunningSessionUnlessLapsedWhileTurnOnReplacesIt) {
  const Date start = now();
  awake->turnOn(1800.0);
  auto controller = make();

  EXPECT_TRUE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_EQ(awake->activeUntil(), start.adding(1800));
  EXPECT_EQ(sessionEnd->pending, start.adding(1800));

  EXPECT_TRUE(controller->turnOn(3600.0));
  EXPECT_EQ(awake->activeUntil(), start.adding(3600));
  EXPECT_EQ(sessionEnd->pending, start.adding(3600));

  EXPECT_TRUE(controller->turnOn(std::nullopt));
  EXPECT_EQ(sessionEnd->pending, std::nullopt);

  awake->turnOn(60.0);
  clocks.pass(61);  // its timer has not fired yet
  EXPECT_TRUE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_EQ(awake->activeUntil(), now().adding(7200));
}

// --- Switching off ---

TEST_F(LidAwakeControllerTest, ALateSuccessOrFailureAfterTurnOffChangesNothing) {
  lid->holdsReplies = true;
  auto controller = make();
  ASSERT_TRUE(controller->turnOnJoiningSessionOr(7200));
  controller->turnOff();
  EXPECT_EQ(held(), 2u);  // the revoke went out behind the renewal

  lid->answerNext();  // the late success
  EXPECT_FALSE(controller->isOn());
  EXPECT_EQ(leaseTimer->pending, std::nullopt);
  lid->answerNext();
  EXPECT_FALSE(lid->isEngaged());
  EXPECT_TRUE(awake->isOn());  // only Deepwake ends

  // A late failure records nothing.
  lid->nextRenewalError = unavailable();
  ASSERT_TRUE(controller->turnOnJoiningSessionOr(7200));
  controller->turnOff();
  lid->answerAll();
  EXPECT_EQ(controller->lastFailure(), std::nullopt);
  EXPECT_EQ(lid->revokeCount, 2);  // no second give-back for the stale reply
}

TEST_F(LidAwakeControllerTest, TurnOffWithNothingHeldSendsNothing) {
  make()->turnOff();
  EXPECT_EQ(lid->revokeCount, 0);

  auto on = makeOn();
  on->turnOff();
  on->turnOff();
  EXPECT_EQ(lid->revokeCount, 1);
  EXPECT_EQ(leaseTimer->pending, std::nullopt);
  EXPECT_EQ(sessionEnd->pending, std::nullopt);
}

// --- A failed renewal ---

TEST_F(LidAwakeControllerTest, AFailedFirstRenewalRevokesAtOnceLeavingTheSessionRunningUntilSwitchedOff) {
  lid->nextRenewalError = refused(LidHelperRefusal::settingOnElsewhereText);
  auto controller = make();

  EXPECT_FALSE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_FALSE(controller->isOn());
  EXPECT_EQ(controller->lastFailure(), helperRefused(LidHelperRefusal::settingOnElsewhere()));
  EXPECT_EQ(lid->revokeCount, 1);
  EXPECT_TRUE(awake->isOn());
  EXPECT_EQ(leaseTimer->pending, std::nullopt);

  // Switching off dismisses the failure and sends nothing more.
  controller->turnOff();
  EXPECT_EQ(controller->lastFailure(), std::nullopt);
  EXPECT_EQ(lid->revokeCount, 1);
}

TEST_F(LidAwakeControllerTest, FailedLaterRenewalTurnsDeepwakeOffAndGivesBack) {
  auto controller = makeOn();
  lid->holdsReplies = true;
  lid->nextRenewalError = unavailable();
  clocks.pass(10);
  leaseTimer->fire();
  lid->answerNext();

  EXPECT_FALSE(controller->isOn());
  EXPECT_EQ(controller->givingBack(), 1);
  EXPECT_EQ(leaseTimer->pending, std::nullopt);

  lid->answerNext();
  EXPECT_EQ(controller->lastFailure(), helperUnavailable);  // the give-back succeeded; the cause stays
  EXPECT_TRUE(awake->isOn());

  // There is no automatic retry: the next check leaves Deepwake off.
  controller->checkLease();
  EXPECT_EQ(held(), 0u);
  EXPECT_EQ(lid->renewCount, 1);

  // Turning on again clears the failure.
  lid->holdsReplies = false;
  EXPECT_TRUE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_EQ(controller->lastFailure(), std::nullopt);
}

// --- Deepwake follows the awake session ---

TEST_F(LidAwakeControllerTest, TheSessionsEndEndsDeepwakeWhicheverTimerSeesItFirst) {
  const std::vector<std::pair<const char*, std::function<void()>>> ends = {
      {"Deepwake's own timer, fired early first", [&] {
         const Date end = now().adding(1800);
         EXPECT_EQ(sessionEnd->pending, end);
         clocks.pass(900);  // the clock was moved: only re-armed
         sessionEnd->fire();
         EXPECT_TRUE(awake->isOn());
         EXPECT_EQ(sessionEnd->pending, end);
         clocks.pass(900);
         sessionEnd->fire();  // the awake controller confirms the expiry
       }},
      {"the lease check", [&] {
         clocks.pass(1800);
         leaseTimer->fire();
       }},
      // Not inside the session's own change, but through a deadline of now.
      {"the session stopped", [&] {
         awake->turnOff();
         EXPECT_EQ(sessionEnd->pending, now());
         EXPECT_TRUE(lid->isEngaged());
         sessionEnd->fire();
       }},
  };
  for (const auto& [name, end] : ends) {
    SCOPED_TRACE(name);
    const int revokes = lid->revokeCount, renewals = lid->renewCount;
    auto controller = makeOn(1800);
    end();
    EXPECT_FALSE(awake->isOn());
    EXPECT_FALSE(controller->isOn());
    EXPECT_EQ(lid->revokeCount, revokes + 1);
    EXPECT_EQ(lid->renewCount, renewals + 1);  // nothing renewed past the end
    EXPECT_EQ(leaseTimer->pending, std::nullopt);
  }
}

TEST_F(LidAwakeControllerTest, LengtheningOrShorteningTheSessionMovesDeepwakesEndAndIsSignalled) {
  const Date start = now();
  auto controller = makeOn(1800);
  int changes = 0;
  auto subscription = controller->observe([&] { ++changes; });
  awake->turnOn(5400.0);
  EXPECT_EQ(sessionEnd->pending, start.adding(5400));
  EXPECT_EQ(changes, 1);
  awake->turnOn(600.0);
  EXPECT_EQ(sessionEnd->pending, start.adding(600));
}

// --- Give-backs that are not confirmed ---

TEST_F(LidAwakeControllerTest, AnUnansweredRevokeIsAnUnconfirmedResetUntilAGiveBackOrRenewalIsConfirmed) {
  for (const bool renewing : {false, true}) {
    SCOPED_TRACE(renewing ? "renewal" : "turned off again");
    const int revokes = lid->revokeCount;
    auto controller = makeWithUnconfirmedReset(unavailable());
    EXPECT_EQ(controller->lastFailure(), helperUnavailable);
    if (renewing) {
      EXPECT_TRUE(controller->turnOnJoiningSessionOr(7200));
    } else {
      controller->turnOff();  // retries the give-back
      EXPECT_EQ(lid->revokeCount, revokes + 2);
    }
    EXPECT_EQ(controller->lastFailure(), std::nullopt);
  }
}

TEST_F(LidAwakeControllerTest, AnUnconfirmedResetOutranksAStartFailureAndOneWhilePreparingIsNotRecorded) {
  auto controller = makeWithUnconfirmedReset(unavailable());
  lid->nextPreparationError = requiresApproval();
  EXPECT_FALSE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_EQ(controller->lastFailure(), helperUnavailable);

  controller->checkLease();  // confirms the give-back
  EXPECT_EQ(controller->lastFailure(), std::nullopt);

  controller = makeWithUnconfirmedReset(unavailable());
  lid->holdsReplies = true;
  lid->nextRenewalError = requiresApproval();
  ASSERT_TRUE(controller->turnOnJoiningSessionOr(7200));
  lid->answerNext();  // the renewal fails; its give-back is held
  EXPECT_EQ(controller->lastFailure(), helperUnavailable);

  lid->answerNext();  // the give-back is confirmed
  EXPECT_EQ(controller->lastFailure(), helperRequiresApproval);
}

TEST_F(LidAwakeControllerTest, AnUnconfirmedResetIsRetriedOneAtATimeARefusalReplacingTheReasonAndVaguerOnesKeepingIt) {
  auto controller = makeWithUnconfirmedReset(unavailable());
  lid->nextRevocationError = requiresApproval();
  controller->checkLease();
  EXPECT_EQ(controller->lastFailure(), helperUnavailable);

  const auto notPutBack = LidHelperRefusal::settingNotPutBack("busy");
  lid->nextRevocationError = refused(notPutBack.reason());
  controller->checkLease();
  EXPECT_EQ(controller->lastFailure(), helperRefused(notPutBack));

  lid->nextRevocationError = unavailable();
  controller->checkLease();
  EXPECT_EQ(controller->lastFailure(), helperRefused(notPutBack));

  const int revokes = lid->revokeCount;
  lid->holdsReplies = true;

  controller->checkLease();
  controller->checkLease();
  controller->turnOff();
  EXPECT_EQ(held(), 1u);
  EXPECT_EQ(controller->givingBack(), 1);

  lid->answerNext();
  EXPECT_EQ(controller->lastFailure(), std::nullopt);

  controller->checkLease();
  controller->turnOff();
  EXPECT_EQ(held(), 0u);
  EXPECT_EQ(lid->revokeCount, revokes + 1);
}

// --- Waiting for the helper ---

TEST_F(LidAwakeControllerTest, WhenSettledWaitsForEveryOutstandingRequestOrRunsAtOnce) {
  lid->holdsReplies = true;
  auto controller = make();
  std::vector<std::string> runs;
  controller->whenSettled([&] { runs.push_back("at once"); });
  EXPECT_EQ(runs, std::vector<std::string>{"at once"});
  runs.clear();

  ASSERT_TRUE(controller->turnOnJoiningSessionOr(7200));
  controller->turnOff();
  controller->whenSettled([&] { runs.push_back("first"); });
  controller->whenSettled([&] { runs.push_back("second"); });
  lid->answerNext();
  EXPECT_TRUE(runs.empty());

  lid->answerNext();
  EXPECT_EQ(runs, (std::vector<std::string>{"first", "second"}));

  // Waiters run once.
  ASSERT_TRUE(controller->turnOnJoiningSessionOr(7200));
  lid->answerAll();
  EXPECT_EQ(runs.size(), 2u);
}

TEST_F(LidAwakeControllerTest, RepliesAfterTheControllerIsGoneDoNothing) {
  lid->holdsReplies = true;
  auto controller = make();
  ASSERT_TRUE(controller->turnOnJoiningSessionOr(7200));
  controller.reset();
  lid->answerAll();
  sessionEnd->fire();
  leaseTimer->fire();
  awake->turnOff();
  notifier->post();
  EXPECT_EQ(lid->renewCount, 1);
  EXPECT_EQ(lid->revokeCount, 0);
}

// --- Machine conditions and the precaution ---

TEST_F(LidAwakeControllerTest, PrecautionFollowsTheMachineConditions) {
  machine->current = {.isOnBattery = true, .hasExternalDisplay = false};
  auto controller = make();
  EXPECT_EQ(controller->precaution(), LidClosePrecaution::none);  // Deepwake is off

  ASSERT_TRUE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_EQ(controller->precaution(), LidClosePrecaution::noHeatPath);

  int changes = 0;
  auto subscription = controller->observe([&] { ++changes; });
  machine->current.hasExternalDisplay = true;
  notifier->post();
  EXPECT_EQ(controller->precaution(), LidClosePrecaution::none);
  EXPECT_EQ(changes, 1);

  notifier->post();  // nothing changed
  EXPECT_EQ(changes, 1);

  machine->current.hasExternalDisplay = false;
  controller->refresh();  // as when the panel opens
  EXPECT_EQ(controller->precaution(), LidClosePrecaution::noHeatPath);
  EXPECT_EQ(changes, 2);
}

// --- Guardrails ---

using Stop = DeepwakeGuardrails::Stop;
using Rule = Stop::Rule;

class LidGuardrailTest : public LidAwakeControllerTest {
 protected:
  // A change the system announces.
  void change(const std::function<void(MachineConditionsSnapshot&)>& edit) {
    edit(machine->current);
    notifier->post();
  }
  // Deepwake ended with the lease given back, the awake session running on.
  void expectStoppedBy(const LidAwakeController& controller, Stop stop) {
    EXPECT_FALSE(controller.isWanted());
    EXPECT_EQ(controller.guardrailStop(), stop);
    EXPECT_EQ(controller.guardrailNotice(), DeepwakeGuardrails::Notice::none);
    EXPECT_FALSE(lid->isEngaged());
    EXPECT_TRUE(awake->isOn());
  }
};

TEST_F(LidGuardrailTest, ARuleComingToHoldEndsDeepwakeAndItsLeaseButNotTheSession) {
  using Edit = void (*)(MachineConditionsSnapshot&);
  const std::pair<Edit, Stop> rules[] = {
      {[](auto& c) { c.batteryCharge = 20; }, Stop{Rule::batteryFloor, 20}},
      {[](auto& c) { c.thermalState = ThermalState::critical; }, Stop{Rule::criticalHeat}},
      {[](auto& c) { c.isLowPowerModeOn = true; }, Stop{Rule::lowPowerMode}},
  };
  for (const auto& [edit, stop] : rules) {
    machine->current = {.isOnBattery = true, .batteryCharge = 21, .isLidClosed = true};
    auto controller = makeOn();
    change(edit);
    expectStoppedBy(*controller, stop);
  }
}

TEST_F(LidGuardrailTest, ChangedSettingsAreStoredAndJudgeTheNextChange) {
  auto controller = makeOn();
  controller->setGuardrailSettings({.stopsInLowPowerMode = false});
  EXPECT_FALSE(guardrails->settings().stopsInLowPowerMode);
  change([](auto& c) { c.isLowPowerModeOn = true; });
  EXPECT_TRUE(controller->isOn());
}

TEST_F(LidGuardrailTest, OpeningTheLidStopsDeepwakeOnlyWhenChosenAndTurningOnWhileARuleHoldsSaysWhy) {
  machine->current.isLidClosed = false;
  for (const bool chosen : {false, true}) {
    guardrails->setSettings({.stopsWhenLidOpens = chosen});
    auto controller = makeOn();
    change([](auto& c) { c.isLidClosed = true; });
    EXPECT_TRUE(controller->isOn());
    change([](auto& c) { c.isLidClosed = false; });
    EXPECT_EQ(controller->isOn(), !chosen);
    if (chosen) expectStoppedBy(*controller, Stop{Rule::lidOpened});
    controller->turnOff();
  }
  awake->turnOff();

  machine->current = {.isOnBattery = true, .batteryCharge = 10};
  auto controller = make();
  const int prepared = lid->prepareCount;
  EXPECT_FALSE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_EQ(controller->guardrailStop(), (Stop{Rule::batteryFloor, 20, /*whenTurningOn=*/true}));
  EXPECT_FALSE(awake->isRequested());
  EXPECT_EQ(lid->prepareCount, prepared);

  // With the floor off it goes on, and the reason goes.
  controller->setGuardrailSettings({.batteryFloor = 0});
  EXPECT_TRUE(controller->turnOnJoiningSessionOr(7200));
  EXPECT_EQ(controller->guardrailStop(), std::nullopt);
}

TEST_F(LidGuardrailTest, OnlyOnPowerGivesTheLeaseBackOnBatteryAndTakesItAgainWithPower) {
  guardrails->setSettings({.onlyOnPowerAdapter = true});
  auto controller = makeOn();
  const int renewals = lid->renewCount;

  change([](auto& c) { c.isOnBattery = true; });
  EXPECT_TRUE(controller->isPausedForPower());
  EXPECT_TRUE(controller->isWanted());
  EXPECT_FALSE(lid->isEngaged());
  leaseTimer->fire();  // nothing is renewed while paused
  EXPECT_EQ(lid->renewCount, renewals);

  change([](auto& c) { c.isOnBattery = false; });
  EXPECT_TRUE(controller->isOn());
  EXPECT_EQ(lid->renewCount, renewals + 1);

  // Turned on while on battery: paused from the start, and the pause ends
  // with the session it rides on.
  controller->turnOff();
  change([](auto& c) { c.isOnBattery = true; });
  EXPECT_TRUE(controller->turnOnJoiningSessionOr(60));
  EXPECT_TRUE(controller->isPausedForPower());
  awake->turnOff();
  EXPECT_FALSE(controller->isWanted());
}

TEST_F(LidGuardrailTest, ARuleComingOnWhilePausedForPowerIsJudgedWhenPowerReturns) {
  using Edit = void (*)(MachineConditionsSnapshot&);
  struct Case {
    const char* name;
    Edit whilePaused;
    Edit withPower;  // what plugging back in brings, beyond power
    std::optional<Stop> stop;
  };
  const Case cases[] = {
      {"Low Power Mode only on battery", [](auto& c) { c.isLowPowerModeOn = true; },
       [](auto& c) { c.isLowPowerModeOn = false; }, std::nullopt},
      {"critical heat", [](auto& c) { c.thermalState = ThermalState::critical; }, [](auto&) {},
       Stop{Rule::criticalHeat}},
  };
  guardrails->setSettings({.onlyOnPowerAdapter = true});
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    machine->current = {.batteryCharge = 60};
    auto controller = makeOn();
    change([](auto& c) { c.isOnBattery = true; });
    change(test.whilePaused);
    EXPECT_EQ(controller->guardrailStop(), std::nullopt);

    change([&](auto& c) {
      c.isOnBattery = false;
      test.withPower(c);
    });
    if (test.stop) {
      expectStoppedBy(*controller, *test.stop);
    } else {
      EXPECT_TRUE(lid->isEngaged());
    }
    controller->turnOff();
  }
}

TEST_F(LidGuardrailTest, ARestartWhilePausedComesBackOffAndHoldsNothing) {
  guardrails->setSettings({.onlyOnPowerAdapter = true});
  machine->current.isOnBattery = true;
  auto controller = make();
  ASSERT_TRUE(controller->turnOnJoiningSessionOr(7200));
  ASSERT_TRUE(controller->isPausedForPower());
  controller.reset();

  auto relaunched = make();
  EXPECT_FALSE(relaunched->isWanted());
  change([](auto& c) { c.isOnBattery = false; });
  EXPECT_FALSE(relaunched->isWanted());
  EXPECT_FALSE(lid->isEngaged());
}

}  // namespace
}  // namespace wakeloft
