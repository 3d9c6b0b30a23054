#include "clock/BackgroundQueue.h"

#include <dispatch/dispatch.h>

#include "clock/WaitDuration.h"

namespace wakeloft::BackgroundQueue {

void runAfter(double seconds, std::function<void()> work) {
  dispatch_after(dispatch_time(DISPATCH_TIME_NOW, WaitDuration::nanoseconds(seconds)),
                 dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0), ^{
                   work();
                 });
}

}  // namespace wakeloft::BackgroundQueue
