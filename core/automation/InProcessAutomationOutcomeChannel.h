#pragma once

#include <functional>
#include <memory>

#include "automation/AutomationOutcomeListener.h"
#include "automation/AutomationOutcomePublisher.h"

namespace wakeloft {

// Both ends of the outcome channel within one process: for Linux, where no
// app publishes, and for tests that put the app's handler and the command
// together. What is published goes through its encoded line, as between
// processes. Main thread only.
class InProcessAutomationOutcomeChannel final : public AutomationOutcomePublisher, public AutomationOutcomeListener {
 public:
  void publish(const AutomationOutcome& outcome) override;
  void listen(std::function<void(const AutomationOutcome&)> heard) override;
  void stop() override;

 private:
  // Shared with the deliveries under way, which stop() empties.
  std::shared_ptr<std::function<void(const AutomationOutcome&)>> heard_;
};

}  // namespace wakeloft
