#include "IOKitClamshell.h"

#include <IOKit/IOKitLib.h>
#include <IOKit/pwr_mgt/IOPMLib.h>

#include <cstdio>
#include <stdexcept>
#include <string>

#include "CFOwned.h"

namespace wakeloft {

namespace {

enum class Reading { yes, no, notThere, unreadable };

// One boolean property of the root power domain.
Reading rootDomainFlag(const char* key) {
  const io_service_t rootDomain = IOServiceGetMatchingService(kIOMainPortDefault, IOServiceMatching("IOPMrootDomain"));
  if (rootDomain == IO_OBJECT_NULL) return Reading::unreadable;
  const auto name = makeCFString(key);
  const CFOwned<CFTypeRef> value(IORegistryEntryCreateCFProperty(rootDomain, name.get(), kCFAllocatorDefault, 0));
  IOObjectRelease(rootDomain);
  if (!value) return Reading::notThere;
  if (CFGetTypeID(value.get()) != CFBooleanGetTypeID()) return Reading::unreadable;
  return CFBooleanGetValue(static_cast<CFBooleanRef>(value.get())) ? Reading::yes : Reading::no;
}

}  // namespace

std::optional<bool> IOKitClamshell::lidIsClosed() {
  switch (rootDomainFlag("AppleClamshellState")) {
    case Reading::yes:
      return true;
    // The property exists only where there is a lid: none here, so none closed.
    case Reading::no:
    case Reading::notThere:
      return false;
    case Reading::unreadable:
      return std::nullopt;
  }
  return std::nullopt;
}

std::optional<bool> IOKitClamshell::closingCausesSleep() {
  switch (rootDomainFlag("AppleClamshellCausesSleep")) {
    case Reading::yes:
      return true;
    case Reading::no:
      return false;
    case Reading::notThere:
    case Reading::unreadable:
      return std::nullopt;
  }
  return std::nullopt;
}

void IOKitClamshell::requestSleep() {
  const io_connect_t powerManagement = IOPMFindPowerManagement(kIOMainPortDefault);
  if (powerManagement == IO_OBJECT_NULL) throw std::runtime_error("the power management service could not be opened");
  const IOReturn result = IOPMSleepSystem(powerManagement);
  IOServiceClose(powerManagement);
  if (result != kIOReturnSuccess) {
    char code[16];
    std::snprintf(code, sizeof code, "0x%08x", static_cast<unsigned>(result));
    throw std::runtime_error(std::string("the system refused to sleep (IOReturn ") + code + ")");
  }
}

}  // namespace wakeloft
