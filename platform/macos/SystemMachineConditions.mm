#include "SystemMachineConditions.h"

#import <Foundation/Foundation.h>
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
#include "IOKitClamshell.h"
#include "lid/BatteryCharge.h"
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

namespace {

std::optional<long long> integerValue(CFDictionaryRef description, const char* key) {
  const auto name = makeCFString(key);
  const auto value = static_cast<CFTypeRef>(CFDictionaryGetValue(description, name.get()));
  if (!value || CFGetTypeID(value) != CFNumberGetTypeID()) return std::nullopt;
  long long number = 0;
  if (!CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberLongLongType, &number)) return std::nullopt;
  return number;
}

}  // namespace

std::optional<int> SystemMachineConditions::batteryCharge() const {
  const CFOwned<CFTypeRef> info(IOPSCopyPowerSourcesInfo());
  if (!info) return std::nullopt;
  const CFOwned<CFArrayRef> sources(IOPSCopyPowerSourcesList(info.get()));
  if (!sources) return std::nullopt;
  const auto batteryType = makeCFString(kIOPSInternalBatteryType);
  const auto typeKey = makeCFString(kIOPSTypeKey);
  for (CFIndex i = 0; i < CFArrayGetCount(sources.get()); ++i) {
    // Get rule: the description belongs to the information.
    const CFDictionaryRef description = IOPSGetPowerSourceDescription(info.get(), CFArrayGetValueAtIndex(sources.get(), i));
    if (!description) continue;
    const auto type = static_cast<CFTypeRef>(CFDictionaryGetValue(description, typeKey.get()));
    if (!type || CFGetTypeID(type) != CFStringGetTypeID() ||
        CFStringCompare(static_cast<CFStringRef>(type), batteryType.get(), 0) != kCFCompareEqualTo) {
      continue;  // an uninterruptible supply is not the Mac's battery
    }
    return BatteryCharge::percent(integerValue(description, kIOPSCurrentCapacityKey),
                                  integerValue(description, kIOPSMaxCapacityKey));
  }
  return std::nullopt;
}

bool SystemMachineConditions::isLowPowerModeOn() const { return NSProcessInfo.processInfo.lowPowerModeEnabled; }

ThermalState SystemMachineConditions::thermalState() const {
  switch (NSProcessInfo.processInfo.thermalState) {
    case NSProcessInfoThermalStateNominal: return ThermalState::nominal;
    case NSProcessInfoThermalStateFair: return ThermalState::fair;
    case NSProcessInfoThermalStateSerious: return ThermalState::serious;
    case NSProcessInfoThermalStateCritical: return ThermalState::critical;
  }
  return ThermalState::nominal;
}

std::optional<bool> SystemMachineConditions::isLidClosed() const { return IOKitClamshell().lidIsClosed(); }

}  // namespace wakeloft
