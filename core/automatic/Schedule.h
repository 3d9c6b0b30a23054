#pragma once

#include <cstdint>
#include <optional>

#include "base/Date.h"
#include "prefs/TimeZone.h"

namespace wakeloft {

// Set hours on set days, in the local zone. Each chosen weekday has one span
// from `start` to `end`; a span whose end is not after its start crosses
// midnight and belongs to the day it starts on, and one whose start equals
// its end lasts the whole day from its start. Times are wall-clock times: a
// daylight-saving change leaves 09:00 at 09:00. A time that the spring change
// skips means the first moment after the gap; one the autumn change repeats
// means its first occurrence.
struct Schedule {
  static constexpr int minutesPerDay = 24 * 60;
  // Monday first, as the bits of `weekdays`.
  enum class Weekday { monday, tuesday, wednesday, thursday, friday, saturday, sunday };
  static constexpr std::uint8_t allWeekdays = 0x7F;

  std::uint8_t weekdays = 0x1F;  // Monday to Friday
  // Minutes after midnight, below `minutesPerDay`.
  int start = 9 * 60;
  int end = 17 * 60;

  static constexpr std::uint8_t bit(Weekday day) { return static_cast<std::uint8_t>(1u << static_cast<int>(day)); }
  constexpr bool includes(Weekday day) const { return (weekdays & bit(day)) != 0; }
  // Whether it can be kept: known weekdays and times within a day.
  constexpr bool isValid() const {
    return weekdays <= allWeekdays && start >= 0 && start < minutesPerDay && end >= 0 && end < minutesPerDay;
  }

  // Whether a span holds at `now`: from its start, up to but not at its end.
  bool holds(Date now, const TimeZone& zone) const;
  // The first start or end of a span after `now`, the moment to judge the
  // schedule again; absent without weekdays.
  std::optional<Date> nextBoundary(Date now, const TimeZone& zone) const;

  friend constexpr bool operator==(const Schedule&, const Schedule&) = default;
};

}  // namespace wakeloft
