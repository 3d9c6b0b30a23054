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

bool IOKitPowerAssertions::isHeld(std::uint32_t assertionID, const std::string& type, const std::string& name) {
  // No properties once the system has let go of the ID. The type and the
  // name tell this app's assertion from another one that reused the ID.
  const CFOwned<CFDictionaryRef> properties(IOPMAssertionCopyProperties(assertionID));
  if (!properties) return false;
  const auto text = [&](CFStringRef key) {
    const CFTypeRef value = CFDictionaryGetValue(properties.get(), key);
    return value && CFGetTypeID(value) == CFStringGetTypeID() ? utf8(static_cast<CFStringRef>(value)) : std::string();
  };
  int level = 0;
  const CFTypeRef levelValue = CFDictionaryGetValue(properties.get(), kIOPMAssertionLevelKey);
  if (levelValue && CFGetTypeID(levelValue) == CFNumberGetTypeID()) {
    CFNumberGetValue(static_cast<CFNumberRef>(levelValue), kCFNumberIntType, &level);
  }
  return text(kIOPMAssertionTypeKey) == type && text(kIOPMAssertionNameKey) == name && level == kIOPMAssertionLevelOn;
}

}  // namespace wakeloft
