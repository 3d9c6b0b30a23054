// Set hours on set days, by the wall clock of the local zone. Berlin is an
// hour ahead of UTC in winter; 2026-01-05 is a Monday. 2026-03-29 skips
// 02:00-03:00 and 2026-10-25 repeats it, both Sundays, at 01:00 UTC.

#include "automatic/Schedule.h"

#include <gtest/gtest.h>

#include "prefs/SystemTimeZone.h"
#include "support/CivilTime.h"

namespace wakeloft {
namespace {

using testing::utc;

constexpr std::uint8_t weekdays = 0x1F, mondays = 0x01, saturdays = 0x20, sundays = 0x40;
const SystemTimeZone berlin("Europe/Berlin");

TEST(ScheduleTest, HoldsFromItsStartUpToItsEndOnTheDayItStarts) {
  const struct {
    Schedule schedule;
    Date at;
    bool holds;
  } cases[] = {
      {{weekdays, 540, 1020}, utc(2026, 1, 5, 8), true},        {{weekdays, 540, 1020}, utc(2026, 1, 5, 16), false},
      {{weekdays, 540, 1020}, utc(2026, 1, 4, 10), false},      {{mondays, 1320, 120}, utc(2026, 1, 5, 23, 30), true},
      {{mondays, 1320, 120}, utc(2026, 1, 6, 1), false},        {{mondays, 1320, 120}, utc(2026, 1, 4, 23, 30), false},
      {{mondays, 0, 0}, utc(2026, 1, 4, 23), true},             {{mondays, 0, 0}, utc(2026, 1, 5, 23), false},
      {{0, 0, 0}, utc(2026, 1, 5, 12), false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.schedule.holds(c.at, berlin), c.holds) << c.schedule.start << " " << c.at.secondsSince1970;
  }
}

TEST(ScheduleTest, BoundariesKeepTheirWallClockTimeAcrossDaylightSavingChanges) {
  const struct {
    Schedule schedule;
    Date after;
    Date next;
  } cases[] = {
      {{sundays, 540, 1020}, utc(2026, 3, 29), utc(2026, 3, 29, 7)},
      {{sundays, 540, 1020}, utc(2026, 10, 25), utc(2026, 10, 25, 8)},
      {{sundays, 150, 540}, utc(2026, 3, 28, 23), utc(2026, 3, 29, 1)},      // skipped: 03:00 summer time
      {{sundays, 150, 540}, utc(2026, 10, 24, 23), utc(2026, 10, 25, 0, 30)},  // repeated: the first 02:30
      {{saturdays, 1320, 360}, utc(2026, 3, 28, 22), utc(2026, 3, 29, 4)},
      {{mondays, 540, 1020}, utc(2026, 1, 5, 16), utc(2026, 1, 12, 8)},
      {{0, 540, 1020}, utc(2026, 1, 5, 16), Date{-1}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.schedule.nextBoundary(c.after, berlin).value_or(Date{-1}), c.next) << c.after.secondsSince1970;
  }
}

}  // namespace
}  // namespace wakeloft
