#pragma once

#include <sys/types.h>

#include <functional>

namespace wakeloft {

// Tells the main thread when a process has ended, from the kernel's own
// notice: nothing runs while the process does. One process at a time. Main
// thread only.
class ProcessExitWatcher {
 public:
  virtual ~ProcessExitWatcher() = default;

  // Watches `pid` in place of any earlier one. `ended` runs once, on the main
  // thread in a later turn of the main loop, when the process has ended; soon
  // after this returns when it already has or never existed. Throws
  // std::runtime_error, watching nothing, when the system cannot watch it.
  virtual void watch(pid_t pid, std::function<void()> ended) = 0;
  // `ended` will not run.
  virtual void cancel() = 0;
};

}  // namespace wakeloft
