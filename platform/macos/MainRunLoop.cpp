#include "clock/MainRunLoop.h"

#include <CoreFoundation/CoreFoundation.h>

#include "base/MainThread.h"
#include "clock/BackgroundQueue.h"

namespace wakeloft::MainRunLoop {

void perform(std::function<void()> work) {
  // A performed block runs when the loop next services blocks, never inside
  // this call; the wake-up makes a sleeping loop do so without another event.
  CFRunLoopRef mainLoop = CFRunLoopGetMain();
  CFRunLoopPerformBlock(mainLoop, kCFRunLoopCommonModes, ^{
    requireMainThread("MainRunLoop work");
    work();
  });
  CFRunLoopWakeUp(mainLoop);
}

void performAfter(double seconds, std::function<void()> work) {
  BackgroundQueue::runAfter(seconds, [work = std::move(work)]() mutable { perform(std::move(work)); });
}

}  // namespace wakeloft::MainRunLoop
