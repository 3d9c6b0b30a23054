#include "prefs/SystemTimeZone.h"

#include <unicode/timezone.h>
#include <unicode/ucal.h>

#include <cmath>
#include <stdexcept>

namespace wakeloft {

struct SystemTimeZone::Zone {
  std::unique_ptr<icu::TimeZone> zone;
};

SystemTimeZone::SystemTimeZone(std::unique_ptr<Zone> zone) : zone_(std::move(zone)) {}

SystemTimeZone::SystemTimeZone(const std::string& identifier) {
  std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(identifier)));
  // ICU answers an identifier it does not know with its unknown zone, which
  // would quietly be UTC.
  icu::UnicodeString id;
  if (!zone || zone->getID(id) == icu::UnicodeString::fromUTF8(UCAL_UNKNOWN_ZONE_ID)) {
    throw std::invalid_argument("Wakeloft: \"" + identifier + "\" is not a known time zone.");
  }
  zone_ = std::make_unique<Zone>(Zone{std::move(zone)});
}

SystemTimeZone SystemTimeZone::current() {
  return SystemTimeZone(std::make_unique<Zone>(Zone{std::unique_ptr<icu::TimeZone>(icu::TimeZone::createDefault())}));
}

SystemTimeZone::SystemTimeZone(SystemTimeZone&&) noexcept = default;
SystemTimeZone& SystemTimeZone::operator=(SystemTimeZone&&) noexcept = default;
SystemTimeZone::~SystemTimeZone() = default;

int SystemTimeZone::secondsFromGMT(Date date) const {
  if (!zone_ || !zone_->zone || !std::isfinite(date.secondsSince1970)) return 0;
  std::int32_t raw = 0;
  std::int32_t daylight = 0;
  UErrorCode status = U_ZERO_ERROR;
  zone_->zone->getOffset(date.secondsSince1970 * 1000.0, false, raw, daylight, status);
  if (U_FAILURE(status)) return 0;
  return (raw + daylight) / 1000;
}

}  // namespace wakeloft
