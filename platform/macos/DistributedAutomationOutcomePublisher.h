#pragma once

#include "automation/AutomationOutcomePublisher.h"

namespace wakeloft {

// Posts each outcome as a distributed notification, delivered at once to the
// commands listening.
class DistributedAutomationOutcomePublisher final : public AutomationOutcomePublisher {
 public:
  void publish(const AutomationOutcome& outcome) override;
};

}  // namespace wakeloft
