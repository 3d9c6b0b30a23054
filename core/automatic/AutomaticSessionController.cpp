#include "automatic/AutomaticSessionController.h"

#include <algorithm>
#include <utility>

#include "base/MainThread.h"

namespace wakeloft {

namespace {

// Room for rounding between the session's own end and the one seen here.
constexpr double endTolerance = 0.001;

}  // namespace

AutomaticSessionController::AutomaticSessionController(
    std::shared_ptr<AwakeController> awake, std::shared_ptr<ProcessBindingController> binding,
    std::shared_ptr<AutomaticSessionStore> store, FactSources facts, std::shared_ptr<const DateProvider> dates,
    std::shared_ptr<const ContinuousTimeProvider> continuous, std::shared_ptr<DeadlineScheduler> scheduler,
    std::shared_ptr<DeadlineRecheckNotifier> recheck)
    : awake_(std::move(awake)),
      binding_(std::move(binding)),
      store_(std::move(store)),
      sources_(std::move(facts)),
      dates_(std::move(dates)),
      continuous_(std::move(continuous)),
      scheduler_(std::move(scheduler)),
      recheck_(std::move(recheck)) {
  requireMainThread("AutomaticSessionController");
  settings_.set(store_->settings());
  rulesForced_.set(store_->areRulesForced());
  suppressed_.set(store_->isSuppressed());

  awake_->observeSession(weakSelf_([](AutomaticSessionController& self) { self.sessionChanged(); }));
  // The binding lets go of its processes before this hears of the stop.
  binding_->observeReleases(
      weakSelf_([](AutomaticSessionController& self, const RunningProcess&, ProcessBindingController::Release why) {
        if (why == ProcessBindingController::Release::sessionTurnedOff) self.turnedOffWhileHeldForProcesses_ = true;
      }));
  // An automatic session that outlasted its rules for the processes held in
  // it ends with the last of them; judged from the timer, never inside the
  // binding's own change.
  bindingChanges_ = binding_->observe(weakSelf_([](AutomaticSessionController& self) {
    const auto stopped = self.rulesStoppedAt_;
    if (!self.awake_->isAutomatic() || !self.binding_->holds().empty() || !stopped ||
        self.continuous_->continuousTime() < *stopped + gracePeriod) {
      return;
    }
    self.scheduler_->schedule(self.dates_->now(), self.weakSelf_([](AutomaticSessionController& later) {
      later.evaluate();
    }));
  }));
  const auto judge = weakSelf_([](AutomaticSessionController& self) { self.evaluate(); });
  sources_.machineChanges->observe(judge);
  sources_.apps->observe(judge);
  recheck_->observe(judge);

  remember();
  evaluate();
}

bool AutomaticSessionController::setSettings(const AutomaticRules::Settings& settings) {
  if (rulesForced_ || !settings.isValid()) return false;
  store_->setSettings(settings);
  settings_.set(settings);
  evaluate();
  return true;
}

void AutomaticSessionController::reload() {
  settings_.set(store_->settings());
  rulesForced_.set(store_->areRulesForced());
  evaluate();
}

void AutomaticSessionController::resume() {
  setSuppressed(false);
  evaluate();
}

std::optional<double> AutomaticSessionController::graceLeft() const {
  const auto& end = graceEndsAt_.get();
  if (!end) return std::nullopt;
  return std::max(0.0, end->secondsSince(dates_->now()));
}

void AutomaticSessionController::evaluate() {
  const auto facts = readFacts();
  facts_.set(facts);
  holding_.set(AutomaticRules::holding(settings_, facts));
  const bool hold = AutomaticRules::hold(settings_, facts);

  const double now = continuous_->continuousTime();
  if (hold) {
    rulesStoppedAt_.reset();
  } else if (!rulesStoppedAt_) {
    rulesStoppedAt_ = now;
  }
  const bool graceOver = rulesStoppedAt_ && now >= *rulesStoppedAt_ + gracePeriod;
  if (graceOver) setSuppressed(false);
  if (graceOver && awake_->isAutomatic() && binding_->holds().empty()) changeSession([&] { awake_->turnOff(); });
  if (hold && !suppressed_ && !isScreenLocked_ && !awake_->isRequested()) changeSession([&] { awake_->turnOnAutomatically(); });

  std::optional<Date> graceEnd;
  if (rulesStoppedAt_ && !graceOver && (awake_->isAutomatic() || suppressed_)) {
    graceEnd = dates_->now().adding(*rulesStoppedAt_ + gracePeriod - now);
  }
  graceEndsAt_.set(graceEnd);

  std::optional<Date> next = graceEnd;
  if (settings_.get().onSchedule) {
    if (const auto zone = sources_.zones->current()) {
      const auto boundary = settings_.get().schedule.nextBoundary(dates_->now(), *zone);
      if (boundary && (!next || *boundary < *next)) next = boundary;
    }
  }
  if (next) {
    scheduler_->schedule(*next, weakSelf_([](AutomaticSessionController& self) { self.evaluate(); }));
  } else {
    scheduler_->cancel();
  }
}

void AutomaticSessionController::setScreenLocked(bool locked) {
  isScreenLocked_ = locked;
  if (locked && awake_->isAutomatic()) changeSession([&] { awake_->turnOff(); });
  evaluate();
}

AutomaticRules::Facts AutomaticSessionController::readFacts() const {
  const auto& settings = settings_.get();
  AutomaticRules::Facts facts;
  facts.hasExternalDisplay = sources_.machine->hasExternalDisplay();
  facts.isOnPowerAdapter = !sources_.machine->isOnBattery();
  if (settings.whileAppsRun) facts.runningApps = sources_.apps->bundleIdentifiers();
  if (settings.onSchedule) {
    const auto zone = sources_.zones->current();
    facts.isWithinSchedule = zone && settings.schedule.holds(dates_->now(), *zone);
  }
  return facts;
}

void AutomaticSessionController::sessionChanged() {
  const bool turnedOffWithProcesses = std::exchange(turnedOffWhileHeldForProcesses_, false);
  const SeenSession was = seen_;
  remember();
  if (isChangingSession_) return;

  if (was.requested && !awake_->isRequested()) {
    const bool timeRanOut =
        (was.until && dates_->now() >= *was.until) ||
        (was.continuousEnd && continuous_->continuousTime() + endTolerance >= *was.continuousEnd);
    const bool processesEnded = was.heldOnlyForProcesses && !turnedOffWithProcesses;
    // Only the user stops a session otherwise, and that is heard as "not now".
    if (!timeRanOut && !processesEnded && !isScreenLocked_ && AutomaticRules::hold(settings_, readFacts())) {
      setSuppressed(true);
    }
  }
  evaluate();
}

void AutomaticSessionController::setSuppressed(bool suppressed) {
  if (suppressed_ == suppressed) return;
  store_->setSuppressed(suppressed);
  suppressed_.set(suppressed);
}

void AutomaticSessionController::remember() {
  seen_.requested = awake_->isRequested();
  seen_.until = awake_->activeUntil();
  const auto left = awake_->remaining();
  seen_.continuousEnd = left ? std::optional(continuous_->continuousTime() + *left) : std::nullopt;
  seen_.heldOnlyForProcesses = binding_->isHeldOnlyForProcesses();
}

template <typename Change>
void AutomaticSessionController::changeSession(Change change) {
  const bool was = std::exchange(isChangingSession_, true);
  change();
  isChangingSession_ = was;
}

}  // namespace wakeloft
