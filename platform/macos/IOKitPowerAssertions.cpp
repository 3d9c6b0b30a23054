#include "IOKitPowerAssertions.h"

#include <IOKit/pwr_mgt/IOPMLib.h>

#include "CFOwned.h"

namespace wakeloft {

PowerAssertions::Creation IOKitPowerAssertions::create(const std::string& type, std::uint32_t level,
                                                        const std::string& name) {
  const auto assertionType = makeCFString(type);
  const auto assertionName = makeCFString(name);
  if (!assertionType || !assertionName) return {kIOReturnBadArgument, 0};

  IOPMAssertionID assertionID = 0;
  const IOReturn code = IOPMAssertionCreateWithName(assertionType.get(), level, assertionName.get(), &assertionID);
  return {code, assertionID};
}

std::int32_t IOKitPowerAssertions::release(std::uint32_t assertionID) { return IOPMAssertionRelease(assertionID); }

}  // namespace wakeloft
