#include "clock/TimerDeadlineScheduler.h"

#include <glib.h>

#include <cmath>

#include "base/MainThread.h"
#include "clock/SystemDateProvider.h"

namespace wakeloft {

struct TimerDeadlineScheduler::Timer {
  GSource* source = nullptr;
  std::function<void()> action;

  ~Timer() {
    g_source_destroy(source);
    g_source_unref(source);
  }
};

namespace {

gboolean fire(gpointer data) {
  requireMainThread("TimerDeadlineScheduler's timer");
  // The action may schedule or cancel, which frees the timer: run a copy.
  const auto action = *static_cast<std::function<void()>*>(data);
  action();
  return G_SOURCE_REMOVE;
}

}  // namespace

TimerDeadlineScheduler::TimerDeadlineScheduler() = default;
TimerDeadlineScheduler::~TimerDeadlineScheduler() = default;

void TimerDeadlineScheduler::schedule(Date at, std::function<void()> action) {
  requireMainThread("TimerDeadlineScheduler::schedule");
  timer_.reset();
  const double interval = intervalUntil(at, SystemDateProvider().now());
  // GLib counts milliseconds in 32 bits; a far deadline fires early, is
  // judged against the clocks and armed again.
  const double milliseconds = std::min(std::ceil(interval * 1000), static_cast<double>(G_MAXUINT));
  timer_ = std::make_unique<Timer>();
  timer_->action = std::move(action);
  timer_->source = g_timeout_source_new(static_cast<guint>(milliseconds));
  g_source_set_callback(timer_->source, fire, &timer_->action, nullptr);
  g_source_attach(timer_->source, nullptr);
}

void TimerDeadlineScheduler::cancel() {
  requireMainThread("TimerDeadlineScheduler::cancel");
  timer_.reset();
}

}  // namespace wakeloft
