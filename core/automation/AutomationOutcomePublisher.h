#pragma once

#include "automation/AutomationOutcome.h"

namespace wakeloft {

// The app's side of the outcome channel: tells every listening command what
// became of an address, or of a hold.
class AutomationOutcomePublisher {
 public:
  virtual ~AutomationOutcomePublisher() = default;

  virtual void publish(const AutomationOutcome& outcome) = 0;
};

}  // namespace wakeloft
