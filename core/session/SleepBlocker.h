#pragma once

namespace wakeloft {

// Holds, or lets go of, the power assertion that keeps the Mac from idle
// sleep. Main thread only.
class SleepBlocker {
 public:
  virtual ~SleepBlocker() = default;
  // Engaging twice holds one assertion. Throws SleepBlockerError when refused.
  virtual void engage() = 0;
  // Cannot fail.
  virtual void release() = 0;
  virtual bool isEngaged() const = 0;
};

}  // namespace wakeloft
