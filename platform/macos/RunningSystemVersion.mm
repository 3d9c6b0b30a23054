#include "RunningSystemVersion.h"

#import <Foundation/Foundation.h>

namespace wakeloft {

OperatingSystemVersion runningSystemVersion() {
  const NSOperatingSystemVersion version = NSProcessInfo.processInfo.operatingSystemVersion;
  return {static_cast<long>(version.majorVersion), static_cast<long>(version.minorVersion),
          static_cast<long>(version.patchVersion)};
}

}  // namespace wakeloft
