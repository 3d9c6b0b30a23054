#pragma once

#include <functional>

#include "automation/AutomationOutcome.h"

namespace wakeloft {

// The command's side of the outcome channel: hears what the app publishes.
// It listens before it sends an address, so no answer can come too early.
// Main thread only.
class AutomationOutcomeListener {
 public:
  virtual ~AutomationOutcomeListener() = default;

  // From now on, `heard` runs on the main thread, in a later turn of the
  // main loop, with each outcome the app publishes, in place of any earlier
  // `heard`. Throws std::runtime_error, hearing nothing, when it cannot.
  virtual void listen(std::function<void(const AutomationOutcome&)> heard) = 0;
  // `heard` will not run again.
  virtual void stop() = 0;
};

}  // namespace wakeloft
