#pragma once

#include <functional>
#include <memory>

#include "automation/AutomationOutcomeListener.h"

namespace wakeloft {

// Hears the app's outcomes as distributed notifications, on the main queue
// that the command's main run loop serves.
class DistributedAutomationOutcomeListener final : public AutomationOutcomeListener {
 public:
  DistributedAutomationOutcomeListener();
  ~DistributedAutomationOutcomeListener() override;

  void listen(std::function<void(const AutomationOutcome&)> heard) override;
  void stop() override;

 private:
  struct Observer;
  std::unique_ptr<Observer> observer_;
};

}  // namespace wakeloft
