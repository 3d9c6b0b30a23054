#include <CoreFoundation/CoreFoundation.h>

#include "support/MainLoopPump.h"

namespace wakeloft::testing {

bool pumpMainLoopUntil(const std::function<bool()>& done, double seconds) {
  bool timedOut = false;
  // A run loop with no timer or source returns at once; this one keeps the
  // loop waiting until the limit instead of spinning.
  CFRunLoopTimerContext context{};
  context.info = &timedOut;
  CFRunLoopTimerRef limit = CFRunLoopTimerCreate(
      kCFAllocatorDefault, CFAbsoluteTimeGetCurrent() + seconds, 0, 0, 0,
      [](CFRunLoopTimerRef, void* flag) { *static_cast<bool*>(flag) = true; }, &context);
  CFRunLoopAddTimer(CFRunLoopGetMain(), limit, kCFRunLoopCommonModes);
  while (!done() && !timedOut) CFRunLoopRunInMode(kCFRunLoopDefaultMode, seconds, true);
  CFRunLoopTimerInvalidate(limit);
  CFRelease(limit);
  return done();
}

void pumpMainLoopFor(double seconds) {
  pumpMainLoopUntil([] { return false; }, seconds);
}

void drainMainLoop() {
  while (CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0, true) == kCFRunLoopRunHandledSource) {
  }
}

}  // namespace wakeloft::testing
