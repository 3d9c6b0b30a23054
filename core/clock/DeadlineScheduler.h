#pragma once

#include <functional>

#include "base/Date.h"

namespace wakeloft {

// One pending one-shot deadline at a time; the action runs on the main
// thread. Called on the main thread only.
class DeadlineScheduler {
 public:
  virtual ~DeadlineScheduler() = default;
  // Replaces any pending deadline with this one.
  virtual void schedule(Date at, std::function<void()> action) = 0;
  virtual void cancel() = 0;
};

}  // namespace wakeloft
