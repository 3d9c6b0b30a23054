#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/Observation.h"
#include "base/WeakSelf.h"
#include "clock/ContinuousTimeProvider.h"
#include "clock/DateProvider.h"
#include "clock/DeadlineRecheckNotifier.h"
#include "clock/DeadlineScheduler.h"
#include "session/AwakeFailure.h"
#include "session/AwakeIntentStore.h"
#include "session/SleepBlocker.h"

namespace wakeloft {

// The keep-awake session: whether the Mac is kept awake, until when, and what
// went wrong when it could not be. Main thread only.
//
// A timed session ends at the earlier of its wall-clock deadline and the same
// deadline on the continuous clock, so setting the clock back cannot stretch
// it and a sleep across the deadline ends it on wake.
class AwakeController {
 public:
  AwakeController(std::shared_ptr<SleepBlocker> blocker, std::shared_ptr<AwakeIntentStore> store,
                  std::shared_ptr<const DateProvider> dates, std::shared_ptr<const ContinuousTimeProvider> continuous,
                  std::shared_ptr<DeadlineScheduler> scheduler, std::shared_ptr<DeadlineRecheckNotifier> recheck,
                  bool restoringPreviousState);
  AwakeController(const AwakeController&) = delete;
  AwakeController& operator=(const AwakeController&) = delete;

  // Off when on; otherwise a session without timer, also after a refused start.
  void toggle();
  // Without seconds: a session without timer. With seconds: a timed session,
  // or off when the deadline cannot be represented.
  void turnOn(std::optional<double> seconds);
  // A session without timer that the automatic rules keep: marked automatic
  // and never stored as the user's intent. Nothing when a session runs.
  void turnOnAutomatically();
  void turnOff();
  // Ends a lapsed session at once; otherwise re-arms the timer at the end.
  void checkExpiry();
  // Takes the assertion again if the system dropped it; done after every
  // wake and clock change.
  void keepAssertion();
  // Called after every start and every stop, in registration order, with the
  // new state in place. Observers live as long as the controller.
  void observeSession(std::function<void()> observer);

  // Told whenever an observable value really changes; endsAt and remaining
  // are derived from them.
  [[nodiscard]] Subscription observe(std::function<void()> handler) { return changed_.observe(std::move(handler)); }

  bool isOn() const { return isOn_; }
  const std::optional<AwakeFailure>& lastFailure() const { return lastFailure_; }
  bool isRequested() const { return isRequested_; }
  // Whether the running session is the automatic rules', not the user's.
  bool isAutomatic() const { return isAutomatic_; }
  std::optional<Date> activeUntil() const { return activeUntil_; }
  std::optional<Date> endsAt() const;
  // Never negative.
  std::optional<double> remaining() const;

 private:
  void activate(std::optional<Date> deadline, bool recording, bool automatic = false);
  void setDeadline(std::optional<Date> deadline);
  void arm(Date at);
  void notifySessionObservers();

  std::shared_ptr<SleepBlocker> blocker_;
  std::shared_ptr<AwakeIntentStore> store_;
  std::shared_ptr<const DateProvider> dates_;
  std::shared_ptr<const ContinuousTimeProvider> continuous_;
  std::shared_ptr<DeadlineScheduler> scheduler_;
  std::shared_ptr<DeadlineRecheckNotifier> recheck_;

  ChangeSignal changed_;
  Published<bool> isOn_{changed_, false};
  Published<std::optional<AwakeFailure>> lastFailure_{changed_, std::nullopt};
  Published<bool> isRequested_{changed_, false};
  Published<bool> isAutomatic_{changed_, false};
  Published<std::optional<Date>> activeUntil_{changed_, std::nullopt};
  Published<std::optional<double>> activeUntilContinuous_{changed_, std::nullopt};
  std::vector<std::function<void()>> sessionObservers_;
  WeakSelf<AwakeController> weakSelf_{this};
};

}  // namespace wakeloft
