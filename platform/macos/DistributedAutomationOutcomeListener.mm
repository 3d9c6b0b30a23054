#include "DistributedAutomationOutcomeListener.h"

#import <Foundation/Foundation.h>

#include <variant>

#include "AutomationOutcomeNotification.h"
#include "NSStringText.h"
#include "base/MainThread.h"

namespace wakeloft {

struct DistributedAutomationOutcomeListener::Observer {
  id token = nil;
};

DistributedAutomationOutcomeListener::DistributedAutomationOutcomeListener()
    : observer_(std::make_unique<Observer>()) {}

DistributedAutomationOutcomeListener::~DistributedAutomationOutcomeListener() { stop(); }

void DistributedAutomationOutcomeListener::listen(std::function<void(const AutomationOutcome&)> heard) {
  requireMainThread("DistributedAutomationOutcomeListener::listen");
  stop();
  // Anything may post this name: a line that does not read is dropped.
  observer_->token = [NSDistributedNotificationCenter.defaultCenter
      addObserverForName:WAKELOFT_AUTOMATION_OUTCOME_NOTIFICATION
                  object:nil
                   queue:NSOperationQueue.mainQueue
              usingBlock:^(NSNotification* notification) {
                if (![notification.object isKindOfClass:NSString.class]) return;
                const auto parsed = AutomationOutcome::parse(utf8(static_cast<NSString*>(notification.object)));
                if (const auto* outcome = std::get_if<AutomationOutcome>(&parsed)) heard(*outcome);
              }];
}

void DistributedAutomationOutcomeListener::stop() {
  if (observer_->token) [NSDistributedNotificationCenter.defaultCenter removeObserver:observer_->token];
  observer_->token = nil;
}

}  // namespace wakeloft
