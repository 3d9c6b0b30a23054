#pragma once

namespace wakeloft {

// Holds, or lets go of, a power assertion: the one that keeps the Mac from
// idle sleep, or the one that keeps its display on. Main thread only.
class SleepBlocker {
 public:
  virtual ~SleepBlocker() = default;
  // Engaging twice holds one assertion. Throws SleepBlockerError when refused.
  virtual void engage() = 0;
  // Cannot fail.
  virtual void release() = 0;
  // While engaged, takes the assertion again if the system has dropped it.
  // Throws SleepBlockerError when refused, and is then no longer engaged.
  virtual void restore() = 0;
  virtual bool isEngaged() const = 0;
};

}  // namespace wakeloft
