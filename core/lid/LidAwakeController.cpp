#include "lid/LidAwakeController.h"

#include <utility>

#include "lease/LidSleepLease.h"
#include "session/AwakeIntent.h"

namespace wakeloft {

LidAwakeController::LidAwakeController(std::shared_ptr<AwakeController> awake,
                                       std::shared_ptr<LidSleepBlocker> blocker,
                                       std::shared_ptr<LidAwakeStore> store,
                                       std::shared_ptr<const MachineConditions> conditions,
                                       std::shared_ptr<MachineConditionsNotifier> conditionsNotifier,
                                       std::shared_ptr<const DateProvider> dates,
                                       std::shared_ptr<DeadlineScheduler> scheduler,
                                       std::shared_ptr<DeadlineScheduler> deadlineScheduler,
                                       std::shared_ptr<DeepwakeGuardrailStore> guardrailStore,
                                       bool runsTranslocated)
    : awake_(std::move(awake)),
      blocker_(std::move(blocker)),
      store_(std::move(store)),
      machine_(std::move(conditions)),
      conditionsNotifier_(std::move(conditionsNotifier)),
      dates_(std::move(dates)),
      scheduler_(std::move(scheduler)),
      deadlineScheduler_(std::move(deadlineScheduler)),
      guardrailStore_(std::move(guardrailStore)),
      runsTranslocated_(runsTranslocated) {
  hasAcknowledgedHeatWarning_.set(store_->hasAcknowledgedHeatWarning());
  guardrailSettings_.set(guardrailStore_->settings());
  isDeepwakeAllowed_.set(guardrailStore_->isDeepwakeAllowed());
  machineConditions_.set(machine_->snapshot());
  sessionUntil_.set(awake_->activeUntil());

  conditionsNotifier_->observe(weakSelf_([](LidAwakeController& self) { self.refreshConditions(); }));
  // A session that is lengthened, shortened or stopped moves Deepwake's end
  // with it.
  awake_->observeSession(weakSelf_([](LidAwakeController& self) {
    if (self.isOn_ || self.isTurningOn_) {
      self.armDeadline();
    } else if (self.isPausedForPower_ && !self.awake_->isOn()) {
      // A pause ends with the session it rides on.
      self.isPausedForPower_.set(false);
    }
  }));
  awakeChanges_ = awake_->observe(weakSelf_([](LidAwakeController& self) {
    self.sessionUntil_.set(self.awake_->activeUntil());
  }));
}

bool LidAwakeController::turnOn(std::optional<double> length) { return start(length, /*joining=*/false); }

bool LidAwakeController::turnOnJoiningSessionOr(std::optional<double> length) {
  return start(length, /*joining=*/true);
}

bool LidAwakeController::start(std::optional<double> length, bool joining) {
  // Before anything that could register the helper.
  if (refusal()) return false;
  // Turning on again clears the reason a guardrail gave last time. One that
  // still holds says so now, rather than letting Deepwake flip on and off.
  refreshConditions();
  const bool pauses = DeepwakeGuardrails::pausesForPower(guardrailSettings_, machineConditions_);
  // A pause holds no lease: the rules are judged when power returns.
  if (auto stop = pauses ? std::nullopt : DeepwakeGuardrails::holding(guardrailSettings_, machineConditions_)) {
    stop->whenTurningOn = true;
    guardrailStop_.set(*stop);
    return false;
  }
  guardrailStop_.set(std::nullopt);
  if (length && !AwakeIntent::deadline(*length, dates_->now())) return false;

  try {
    blocker_->prepare();
  } catch (...) {
    recordStartFailure(AwakeFailure::from(std::current_exception()));
    return false;
  }

  if (joining) {
    awake_->checkExpiry();
    if (!awake_->isOn()) awake_->turnOn(length);
  } else {
    awake_->turnOn(length);
  }

  if (!awake_->isOn()) {
    recordStartFailure(awake_->lastFailure());
    return false;
  }
  if (pauses) {
    if (!isPausedForPower_) pauseForPower();
    return true;
  }
  renewLease();
  return isOn_ || isTurningOn_;
}

void LidAwakeController::recordStartFailure(std::optional<AwakeFailure> failure) {
  startFailure_.set(unconfirmedReset_.get() ? std::nullopt : std::move(failure));
}

void LidAwakeController::renewLease() {
  if (isRenewing_) return;  // never more than one renewal in flight
  isRenewing_ = true;
  if (!isOn_) isTurningOn_.set(true);
  armDeadline();

  unanswered_.set(unanswered_ + 1);
  const int tag = switchOffs_;
  blocker_->renew(dates_->now().adding(LidSleepLease::duration),
                  weakSelf_([tag](LidAwakeController& self, std::exception_ptr error) { self.renewed(error, tag); }));
}

void LidAwakeController::renewed(std::exception_ptr error, int tag) {
  if (tag != switchOffs_) {
    settle();
    return;
  }
  isRenewing_ = false;
  isTurningOn_.set(false);

  if (!error) {
    isOn_.set(true);
    startFailure_.set(std::nullopt);
    unconfirmedReset_.set(std::nullopt);
    arm();
  } else {
    // The awake session itself runs on; only Deepwake ends.
    scheduler_->cancel();
    deadlineScheduler_->cancel();
    isOn_.set(false);
    startFailure_.set(AwakeFailure::from(error));
    giveBack();
  }
  settle();
}

void LidAwakeController::arm() {
  scheduler_->schedule(dates_->now().adding(LidSleepLease::renewalInterval),
                       weakSelf_([](LidAwakeController& self) { self.checkLease(); }));
}

void LidAwakeController::checkLease() {
  if (!isOn_ && !isTurningOn_) {
    if (unconfirmedReset_.get() && givingBack_ == 0) giveBack();
    return;
  }
  awake_->checkExpiry();
  if (awake_->isOn()) {
    renewLease();
  } else {
    turnOff();
  }
}

void LidAwakeController::armDeadline() {
  const auto reached = weakSelf_([](LidAwakeController& self) { self.deadlineReached(); });
  if (!awake_->isOn()) {
    // Stopped or refused: end Deepwake at once, but from the timer, outside
    // the session change that got us here.
    deadlineScheduler_->schedule(dates_->now(), reached);
  } else if (const auto end = awake_->endsAt()) {
    deadlineScheduler_->schedule(*end, reached);
  } else {
    deadlineScheduler_->cancel();
  }
}

void LidAwakeController::deadlineReached() {
  if (!isOn_ && !isTurningOn_) return;
  awake_->checkExpiry();
  if (!awake_->isOn()) {
    turnOff();
  } else {
    armDeadline();
  }
}

void LidAwakeController::turnOff() {
  scheduler_->cancel();
  deadlineScheduler_->cancel();

  ++switchOffs_;
  const bool wasRenewing = std::exchange(isRenewing_, false);
  isTurningOn_.set(false);
  isPausedForPower_.set(false);
  startFailure_.set(std::nullopt);

  if (!isOn_ && !wasRenewing) {
    // Nothing held; only a give-back that was never confirmed is tried again.
    if (!unconfirmedReset_.get() || givingBack_ != 0) return;
  }
  isOn_.set(false);
  giveBack();
}

void LidAwakeController::giveBack() {
  ++givingBack_;
  unanswered_.set(unanswered_ + 1);
  blocker_->revoke(weakSelf_([](LidAwakeController& self, std::exception_ptr error) { self.gaveBack(error); }));
}

void LidAwakeController::gaveBack(std::exception_ptr error) {
  --givingBack_;
  if (error) {
    auto failure = AwakeFailure::from(error);
    // A refusal says exactly what the helper did; anything vaguer keeps the
    // first reason.
    if (failure.as<AwakeFailure::LidHelperRefused>() || !unconfirmedReset_.get()) {
      unconfirmedReset_.set(std::move(failure));
    }
    startFailure_.set(std::nullopt);
  } else {
    unconfirmedReset_.set(std::nullopt);
  }
  settle();
}

void LidAwakeController::settle() {
  unanswered_.set(unanswered_ - 1);
  if (unanswered_ != 0) return;
  auto waiters = std::exchange(settledWaiters_, {});
  for (auto& waiter : waiters) waiter();
}

void LidAwakeController::whenSettled(std::function<void()> action) {
  if (unanswered_ == 0) {
    action();
  } else {
    settledWaiters_.push_back(std::move(action));
  }
}

void LidAwakeController::acknowledgeHeatWarning() {
  store_->setHasAcknowledgedHeatWarning(true);
  hasAcknowledgedHeatWarning_.set(true);
}

void LidAwakeController::refresh() {
  hasAcknowledgedHeatWarning_.set(store_->hasAcknowledgedHeatWarning());
  // A configuration profile may have arrived or changed.
  guardrailSettings_.set(guardrailStore_->settings());
  isDeepwakeAllowed_.set(guardrailStore_->isDeepwakeAllowed());
  if (!isDeepwakeAllowed_ && isWanted()) turnOff();
  refreshConditions();
}

void LidAwakeController::refreshConditions() {
  const auto before = machineConditions_.get();
  machineConditions_.set(machine_->snapshot());
  applyGuardrails(before);
}

void LidAwakeController::setGuardrailSettings(const DeepwakeGuardrails::Settings& wanted) {
  const auto settings = forcedGuardrails().applied(wanted, guardrailSettings_);
  guardrailStore_->setSettings(settings);
  guardrailSettings_.set(settings);
  applyGuardrails(machineConditions_);
}

void LidAwakeController::applyGuardrails(const MachineConditionsSnapshot& before) {
  if (!isWanted()) return;
  if (const auto stop = DeepwakeGuardrails::stopping(guardrailSettings_, before, machineConditions_)) {
    // The awake session runs on; only Deepwake ends. With the lease given
    // back, the helper lets a Mac with its lid closed sleep, as after any
    // lease that ends with the lid closed.
    turnOff();
    guardrailStop_.set(*stop);
    return;
  }
  const bool pause = DeepwakeGuardrails::pausesForPower(guardrailSettings_, machineConditions_);
  if (pause && !isPausedForPower_) {
    pauseForPower();
  } else if (!pause && isPausedForPower_) {
    resumeWithPower();
  }
}

void LidAwakeController::pauseForPower() {
  turnOff();
  isPausedForPower_.set(true);
}

void LidAwakeController::resumeWithPower() {
  isPausedForPower_.set(false);
  awake_->checkExpiry();
  if (awake_->isOn()) renewLease();
}

DeepwakeGuardrails::Notice LidAwakeController::guardrailNotice() const {
  if (!isWanted()) return DeepwakeGuardrails::Notice::none;
  return DeepwakeGuardrails::notice(guardrailSettings_, machineConditions_, isPausedForPower_);
}

std::optional<AwakeFailure> LidAwakeController::lastFailure() const {
  if (unconfirmedReset_.get()) return unconfirmedReset_.get();
  return startFailure_.get();
}

std::optional<LidAwakeRefusal> LidAwakeController::refusal() const {
  if (!isDeepwakeAllowed_) return LidAwakeRefusal::forbiddenByOrganization;
  if (runsTranslocated_) return LidAwakeRefusal::translocated;
  if (!hasAcknowledgedHeatWarning_) return LidAwakeRefusal::unacknowledged;
  return std::nullopt;
}

LidClosePrecaution LidAwakeController::precaution() const {
  return LidClosePrecaution::shown(isOn_, hasAcknowledgedHeatWarning_, machineConditions_);
}

}  // namespace wakeloft
