#pragma once

#include <sys/types.h>

#include <functional>

namespace wakeloft {

// Tells the main thread when a process has ended, from the kernel's own
// notice: nothing runs while the processes do. Any number of processes at
// once, each watched by its pid. Main thread only.
class ProcessExitWatcher {
 public:
  virtual ~ProcessExitWatcher() = default;

  // Watches `pid` beside the others, in place of an earlier watch of the
  // same pid. `ended` runs once, on the main thread in a later turn of the
  // main loop, when the process has ended; soon after this returns when it
  // already has or never existed. Throws std::runtime_error when the system
  // cannot watch it, leaving an earlier watch of `pid` as it was.
  virtual void watch(pid_t pid, std::function<void()> ended) = 0;
  // The `ended` of `pid`'s watch will not run.
  virtual void cancel(pid_t pid) = 0;
};

}  // namespace wakeloft
