#pragma once

#include <chrono>

#include "base/Date.h"

namespace wakeloft::testing {

// The instant of a date and time given in UTC.
inline Date utc(int year, unsigned month, unsigned day, int hour = 0, int minute = 0) {
  const std::chrono::sys_days days{std::chrono::year{year} / std::chrono::month{month} / std::chrono::day{day}};
  return Date{static_cast<double>(days.time_since_epoch().count()) * 86'400 + hour * 3'600 + minute * 60};
}

}  // namespace wakeloft::testing
