#include "clock/TimerDeadlineScheduler.h"

#include <CoreFoundation/CoreFoundation.h>

#include "base/MainThread.h"
#include "clock/SystemDateProvider.h"

namespace wakeloft {

namespace {

// AppKit's tracking mode, named here so the scheduler needs no AppKit: menus
// and drags run the loop in it, and a deadline must still fire meanwhile.
const CFStringRef eventTrackingMode = CFSTR("NSEventTrackingRunLoopMode");

}  // namespace

struct TimerDeadlineScheduler::Timer {
  CFRunLoopTimerRef timer = nullptr;

  ~Timer() {
    if (!timer) return;
    CFRunLoopTimerInvalidate(timer);
    CFRelease(timer);
  }
};

TimerDeadlineScheduler::TimerDeadlineScheduler() = default;
TimerDeadlineScheduler::~TimerDeadlineScheduler() = default;

void TimerDeadlineScheduler::schedule(Date at, std::function<void()> action) {
  requireMainThread("TimerDeadlineScheduler::schedule");
  timer_.reset();
  const double interval = intervalUntil(at, SystemDateProvider().now());
  // One-shot (interval 0), no tolerance: the system may not push it later.
  CFRunLoopTimerRef timer =
      CFRunLoopTimerCreateWithHandler(kCFAllocatorDefault, CFAbsoluteTimeGetCurrent() + interval, 0, 0, 0,
                                      ^(CFRunLoopTimerRef) {
                                        requireMainThread("TimerDeadlineScheduler's timer");
                                        // The action may schedule or cancel, which lets go of this
                                        // timer and its block: run a copy.
                                        const auto run = action;
                                        run();
                                      });
  if (!timer) return;
  timer_ = std::make_unique<Timer>();
  timer_->timer = timer;
  CFRunLoopRef mainLoop = CFRunLoopGetMain();
  CFRunLoopAddTimer(mainLoop, timer, kCFRunLoopCommonModes);
  CFRunLoopAddTimer(mainLoop, timer, eventTrackingMode);
}

void TimerDeadlineScheduler::cancel() {
  requireMainThread("TimerDeadlineScheduler::cancel");
  timer_.reset();
}

}  // namespace wakeloft
