#pragma once

#include <memory>

#include "clock/DeadlineScheduler.h"

namespace wakeloft {

// The system deadline scheduler: one one-shot timer on the main loop, firing
// no sooner than 50 ms from now so an overdue deadline never spins.
// Defined by the platform layer.
class TimerDeadlineScheduler final : public DeadlineScheduler {
 public:
  static constexpr double minimumInterval = 0.05;

  TimerDeadlineScheduler();
  ~TimerDeadlineScheduler() override;
  TimerDeadlineScheduler(const TimerDeadlineScheduler&) = delete;
  TimerDeadlineScheduler& operator=(const TimerDeadlineScheduler&) = delete;

  void schedule(Date at, std::function<void()> action) override;
  void cancel() override;

  // Seconds from `now` until `at`, at least `minimumInterval`; NaN counts as due.
  static double intervalUntil(Date at, Date now) {
    const double seconds = at.secondsSince(now);
    return seconds > minimumInterval ? seconds : minimumInterval;  // NaN fails the test too
  }

 private:
  struct Timer;
  std::unique_ptr<Timer> timer_;
};

}  // namespace wakeloft
