#include "SystemMachineConditions.h"

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <IOKit/ps/IOPowerSources.h>
#include <IOKit/ps/IOPSKeys.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "CFOwned.h"
#include "lid/OnlineDisplayList.h"
#include "lid/ProvidingPowerSource.h"

namespace wakeloft {

static_assert(std::string_view(kIOPMBatteryPowerKey) == ProvidingPowerSource::batteryPowerType);

bool SystemMachineConditions::isOnBattery() const {
  const CFOwned<CFTypeRef> info(IOPSCopyPowerSourcesInfo());
  if (!info) return ProvidingPowerSource::isBattery(std::nullopt);
  // Get rule: the string belongs to the power-source information.
  const CFStringRef type = IOPSGetProvidingPowerSourceType(info.get());
  if (!type) {
    std::fprintf(stderr, "Wakeloft: the power-source information names no providing power source.\n");
    std::fflush(stderr);
    std::abort();
  }
  return ProvidingPowerSource::isBattery(utf8(type));
}

bool SystemMachineConditions::hasExternalDisplay() const {
  OnlineDisplayList::IDs ids{};
  std::uint32_t count = 0;
  const CGError error = CGGetOnlineDisplayList(OnlineDisplayList::capacity, ids.data(), &count);
  return OnlineDisplayList::hasExternalDisplay(
      error == kCGErrorSuccess, ids, count,
      [](OnlineDisplayList::DisplayID id) { return CGDisplayIsBuiltin(id) != 0; });
}

}  // namespace wakeloft
