#pragma once

#include <exception>
#include <functional>

#include "base/Date.h"

namespace wakeloft {

// Everything Deepwake needs from the privileged helper: get it ready, renew a
// lease until an instant, give the lease back. Main thread only; completions
// run on the main thread and receive a null exception_ptr on success or the
// error (usually a LidSleepBlockerError).
class LidSleepBlocker {
 public:
  using Completion = std::function<void(std::exception_ptr)>;

  virtual ~LidSleepBlocker() = default;

  // Makes sure the helper can be reached. Throws when it cannot.
  virtual void prepare() {}
  virtual void renew(Date until, Completion completion) = 0;
  virtual void revoke(Completion completion) = 0;
  // True while the last renewal was confirmed and no revoke has been sent since.
  virtual bool isEngaged() const = 0;
};

}  // namespace wakeloft
