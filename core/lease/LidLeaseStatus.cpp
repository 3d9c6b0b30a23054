#include "lease/LidLeaseStatus.h"

#include <charconv>
#include <cmath>

#include "base/DecimalNumber.h"
#include "lease/LidSleepLease.h"

namespace wakeloft {

namespace {

constexpr std::string_view settingPrefix = "status setting=";
constexpr std::string_view leasePart = " lease=";
constexpr std::string_view becausePart = " because=";

bool consume(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

}  // namespace

std::string LidLeaseStatus::text() const {
  std::string line(settingPrefix);
  line += setting == Setting::on ? "1" : setting == Setting::off ? "0" : "unreadable";
  line += leasePart;
  if (leaseRemaining) {
    char digits[64];
    const auto result = std::to_chars(digits, digits + sizeof digits, *leaseRemaining);
    line.append(digits, result.ptr);
  } else {
    line += "none";
  }
  if (setting == Setting::unreadable) line += std::string(becausePart) + unreadableDetail;
  return line;
}

std::optional<LidLeaseStatus> LidLeaseStatus::read(std::string_view text) {
  LidLeaseStatus status;
  if (!consume(text, settingPrefix)) return std::nullopt;
  if (consume(text, "0")) {
    status.setting = Setting::off;
  } else if (consume(text, "1")) {
    status.setting = Setting::on;
  } else if (consume(text, "unreadable")) {
    status.setting = Setting::unreadable;
  } else {
    return std::nullopt;
  }
  if (!consume(text, leasePart)) return std::nullopt;
  const auto space = text.find(' ');
  const std::string_view lease = text.substr(0, space);
  text.remove_prefix(lease.size());
  if (lease != "none") {
    const auto seconds = DecimalNumber::read(lease);
    if (!seconds || !(*seconds >= 0 && *seconds <= LidSleepLease::duration) || std::signbit(*seconds)) {
      return std::nullopt;
    }
    status.leaseRemaining = *seconds;
  }
  if (status.setting == Setting::unreadable) {
    if (!consume(text, becausePart)) return std::nullopt;
    status.unreadableDetail = std::string(text);
  } else if (!text.empty()) {
    return std::nullopt;
  }
  return status;
}

}  // namespace wakeloft
