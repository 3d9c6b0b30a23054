#include "prefs/SystemTimeZone.h"

#include <CoreFoundation/CoreFoundation.h>

#include <cmath>
#include <stdexcept>

#include "CFOwned.h"

namespace wakeloft {

struct SystemTimeZone::Zone {
  CFOwned<CFTimeZoneRef> zone;
};

SystemTimeZone::SystemTimeZone(std::unique_ptr<Zone> zone) : zone_(std::move(zone)) {}

SystemTimeZone::SystemTimeZone(const std::string& identifier) {
  const auto name = makeCFString(identifier);
  // Names only, no abbreviations: "EST" would be a guess.
  CFOwned<CFTimeZoneRef> zone(name ? CFTimeZoneCreateWithName(kCFAllocatorDefault, name.get(), false) : nullptr);
  if (!zone) throw std::invalid_argument("Wakeloft: \"" + identifier + "\" is not a known time zone.");
  zone_ = std::make_unique<Zone>(Zone{std::move(zone)});
}

SystemTimeZone SystemTimeZone::current() {
  return SystemTimeZone(std::make_unique<Zone>(Zone{CFOwned<CFTimeZoneRef>(CFTimeZoneCopyDefault())}));
}

SystemTimeZone::SystemTimeZone(SystemTimeZone&&) noexcept = default;
SystemTimeZone& SystemTimeZone::operator=(SystemTimeZone&&) noexcept = default;
SystemTimeZone::~SystemTimeZone() = default;

int SystemTimeZone::secondsFromGMT(Date date) const {
  if (!zone_ || !zone_->zone || !std::isfinite(date.secondsSince1970)) return 0;
  const CFTimeInterval offset =
      CFTimeZoneGetSecondsFromGMT(zone_->zone.get(), date.secondsSince1970 - kCFAbsoluteTimeIntervalSince1970);
  return std::isfinite(offset) ? static_cast<int>(std::lround(offset)) : 0;
}

}  // namespace wakeloft
