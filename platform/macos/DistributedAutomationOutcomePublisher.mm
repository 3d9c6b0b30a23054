#include "DistributedAutomationOutcomePublisher.h"

#import <Foundation/Foundation.h>

#include "AutomationOutcomeNotification.h"
#include "NSStringText.h"

namespace wakeloft {

void DistributedAutomationOutcomePublisher::publish(const AutomationOutcome& outcome) {
  [NSDistributedNotificationCenter.defaultCenter postNotificationName:WAKELOFT_AUTOMATION_OUTCOME_NOTIFICATION
                                                               object:nsString(outcome.encode())
                                                             userInfo:nil
                                                              options:NSDistributedNotificationDeliverImmediately];
}

}  // namespace wakeloft
