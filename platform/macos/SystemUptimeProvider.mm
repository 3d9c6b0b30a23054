#include "clock/SystemUptimeProvider.h"

#import <Foundation/Foundation.h>

namespace wakeloft {

// Seconds since boot while awake: time asleep is not counted.
double SystemUptimeProvider::uptime() const { return NSProcessInfo.processInfo.systemUptime; }

}  // namespace wakeloft
