#include "session/AwakeController.h"

#include "base/MainThread.h"

namespace wakeloft {

AwakeController::AwakeController(std::shared_ptr<SleepBlocker> blocker, std::shared_ptr<AwakeIntentStore> store,
                                 std::shared_ptr<const DateProvider> dates,
                                 std::shared_ptr<const ContinuousTimeProvider> continuous,
                                 std::shared_ptr<DeadlineScheduler> scheduler,
                                 std::shared_ptr<DeadlineRecheckNotifier> recheck, bool restoringPreviousState)
    : blocker_(std::move(blocker)),
      store_(std::move(store)),
      dates_(std::move(dates)),
      continuous_(std::move(continuous)),
      scheduler_(std::move(scheduler)),
      recheck_(std::move(recheck)) {
  const StoredAwakeIntent stored = store_->load();
  const bool isOff = stored == StoredAwakeIntent::intent(AwakeIntent::off());

  std::optional<Date> deadline;
  bool stale = stored.isUnreadableDeadline();
  if (const auto& intent = stored.readable(); intent && intent->kind() == AwakeIntent::Kind::until) {
    const Date date = *intent->date();
    if (AwakeIntent::isUsable(date)) {
      deadline = date;
      stale = dates_->now() >= date;
    } else {
      stale = true;
    }
  }

  isRequested_.set(!isOff);
  setDeadline(stale ? std::nullopt : deadline);

  recheck_->observe(weakSelf_([](AwakeController& self) {
    self.checkExpiry();
    self.keepAssertion();
  }));

  if (!restoringPreviousState || isOff) return;
  if (stale) {
    turnOff();  // also cleans a lapsed or garbled record out of the store
  } else {
    activate(deadline, /*recording=*/false);
  }
}

void AwakeController::toggle() {
  if (isOn_) {
    turnOff();
  } else {
    activate(std::nullopt, /*recording=*/true);
  }
}

void AwakeController::turnOn(std::optional<double> seconds) {
  if (!seconds) {
    activate(std::nullopt, /*recording=*/true);
    return;
  }
  if (const auto deadline = AwakeIntent::deadline(*seconds, dates_->now())) {
    activate(deadline, /*recording=*/true);
  } else {
    turnOff();
  }
}

void AwakeController::turnOnAutomatically() {
  if (!isRequested_) activate(std::nullopt, /*recording=*/false, /*automatic=*/true);
}

void AwakeController::turnOff() {
  scheduler_->cancel();
  store_->save(AwakeIntent::off());
  isRequested_.set(false);
  isAutomatic_.set(false);
  setDeadline(std::nullopt);
  lastFailure_.set(std::nullopt);
  if (isOn_) {
    blocker_->release();
    isOn_.set(false);
  }
  notifySessionObservers();
}

void AwakeController::checkExpiry() {
  const auto end = endsAt();
  if (!end) return;
  if (dates_->now() >= *end) {
    turnOff();
  } else {
    arm(*end);  // a clock change or a sleep may have moved the end
  }
}

void AwakeController::keepAssertion() {
  if (!isOn_) return;
  try {
    blocker_->restore();
  } catch (const std::exception& error) {
    // As a refused start: the request stands and the panel offers the retry.
    isOn_.set(false);
    lastFailure_.set(AwakeFailure::from(error));
    notifySessionObservers();
  }
}

void AwakeController::observeSession(std::function<void()> observer) { sessionObservers_.push_back(std::move(observer)); }

std::optional<Date> AwakeController::endsAt() const {
  const auto until = activeUntil_.get();
  if (!until) return std::nullopt;
  const auto continuousEnd = activeUntilContinuous_.get();
  if (!continuousEnd) return until;
  const double continuousLeft = *continuousEnd - continuous_->continuousTime();
  const Date now = dates_->now();
  const double wallLeft = until->secondsSince(now);
  if (continuousLeft < wallLeft) return now.adding(continuousLeft);
  return until;
}

std::optional<double> AwakeController::remaining() const {
  const auto end = endsAt();
  if (!end) return std::nullopt;
  const double left = end->secondsSince(dates_->now());
  return left < 0 ? 0 : left;
}

void AwakeController::activate(std::optional<Date> deadline, bool recording, bool automatic) {
  if (recording) store_->save(deadline ? AwakeIntent::until(*deadline) : AwakeIntent::indefinite());
  isRequested_.set(true);
  isAutomatic_.set(automatic);
  setDeadline(deadline);

  if (!isOn_) {
    try {
      blocker_->engage();
      isOn_.set(true);
      lastFailure_.set(std::nullopt);
    } catch (const std::exception& error) {
      // The request stands and its deadline stays armed, so a refused timed
      // session still ends on time.
      isOn_.set(false);
      lastFailure_.set(AwakeFailure::from(error));
    }
  }

  if (const auto end = endsAt()) {
    arm(*end);
  } else {
    scheduler_->cancel();
  }
  notifySessionObservers();
}

void AwakeController::setDeadline(std::optional<Date> deadline) {
  activeUntil_.set(deadline);
  if (!deadline) {
    activeUntilContinuous_.set(std::nullopt);
    return;
  }
  requireMainThread("AwakeController's continuous deadline");
  const double continuousNow = continuous_->continuousTime();
  activeUntilContinuous_.set(continuousNow + deadline->secondsSince(dates_->now()));
}

void AwakeController::arm(Date at) {
  scheduler_->schedule(at, weakSelf_([](AwakeController& self) { self.checkExpiry(); }));
}

void AwakeController::notifySessionObservers() {
  // Observers may register others; those are called from the next change on.
  const auto count = sessionObservers_.size();
  for (std::size_t i = 0; i < count; ++i) {
    const auto observer = sessionObservers_[i];  // the list may grow under it
    observer();
  }
}

}  // namespace wakeloft
