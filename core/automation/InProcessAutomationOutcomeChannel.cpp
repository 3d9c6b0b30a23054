#include "automation/InProcessAutomationOutcomeChannel.h"

#include <variant>

#include "base/MainThread.h"
#include "clock/MainRunLoop.h"

namespace wakeloft {

void InProcessAutomationOutcomeChannel::publish(const AutomationOutcome& outcome) {
  requireMainThread("InProcessAutomationOutcomeChannel::publish");
  if (!heard_) return;
  MainRunLoop::perform([heard = heard_, line = outcome.encode()] {
    const auto parsed = AutomationOutcome::parse(line);
    if (*heard && std::holds_alternative<AutomationOutcome>(parsed)) (*heard)(std::get<AutomationOutcome>(parsed));
  });
}

void InProcessAutomationOutcomeChannel::listen(std::function<void(const AutomationOutcome&)> heard) {
  requireMainThread("InProcessAutomationOutcomeChannel::listen");
  stop();
  heard_ = std::make_shared<std::function<void(const AutomationOutcome&)>>(std::move(heard));
}

void InProcessAutomationOutcomeChannel::stop() {
  requireMainThread("InProcessAutomationOutcomeChannel::stop");
  if (heard_) *heard_ = nullptr;
  heard_.reset();
}

}  // namespace wakeloft
