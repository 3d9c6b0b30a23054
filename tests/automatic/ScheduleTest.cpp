// Set hours on set days, by the wall clock of the local zone.

#include "automatic/Schedule.h"

#include <gtest/gtest.h>

#include "prefs/SystemTimeZone.h"
#include "support/CivilTime.h"

namespace wakeloft {
namespace {

using testing::utc;
using Day = Schedule::Weekday;

constexpr std::uint8_t weekdays = 0x1F;
constexpr std::uint8_t sundays = Schedule::bit(Day::sunday);
constexpr std::uint8_t mondays = Schedule::bit(Day::monday);

const SystemTimeZone& berlin() {
  static const SystemTimeZone zone("Europe/Berlin");
  return zone;
}

// Berlin is an hour ahead of UTC in winter: 2026-01-05 is a Monday.
TEST(ScheduleTest, HoldsFromItsStartUpToItsEndOnTheDayItStarts) {
  const struct {
    Schedule schedule;
    Date at;
    bool holds;
  } cases[] = {
      {{weekdays, 9 * 60, 17 * 60}, utc(2026, 1, 5, 7, 59), false},
      {{weekdays, 9 * 60, 17 * 60}, utc(2026, 1, 5, 8, 0), true},
      {{weekdays, 9 * 60, 17 * 60}, utc(2026, 1, 5, 16, 0), false},
      {{weekdays, 9 * 60, 17 * 60}, utc(2026, 1, 4, 10, 0), false},  // a Sunday
      // Across midnight, Monday's span holds into Tuesday's small hours...
      {{mondays, 22 * 60, 2 * 60}, utc(2026, 1, 5, 23, 30), true},
      {{mondays, 22 * 60, 2 * 60}, utc(2026, 1, 6, 0, 30), true},
      {{mondays, 22 * 60, 2 * 60}, utc(2026, 1, 6, 1, 0), false},
      // ...and Sunday's unchosen span does not hold into Monday's.
      {{mondays, 22 * 60, 2 * 60}, utc(2026, 1, 4, 23, 30), false},
      // Start equal to end: the whole day from its start.
      {{mondays, 0, 0}, utc(2026, 1, 4, 23, 0), true},
      {{mondays, 0, 0}, utc(2026, 1, 5, 22, 59), true},
      {{mondays, 0, 0}, utc(2026, 1, 5, 23, 0), false},
      {{0, 0, 0}, utc(2026, 1, 5, 12, 0), false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.schedule.holds(c.at, berlin()), c.holds)
        << c.schedule.start << "-" << c.schedule.end << " at " << c.at.secondsSince1970;
  }
}

// 2026-03-29 skips 02:00-03:00 and 2026-10-25 repeats it, both Sundays; the
// change is at 01:00 UTC.
TEST(ScheduleTest, BoundariesKeepTheirWallClockTimeAcrossDaylightSavingChanges) {
  const struct {
    Schedule schedule;
    Date after;
    Date next;
  } cases[] = {
      {{sundays, 9 * 60, 17 * 60}, utc(2026, 3, 29, 0, 0), utc(2026, 3, 29, 7, 0)},
      {{sundays, 9 * 60, 17 * 60}, utc(2026, 10, 25, 0, 0), utc(2026, 10, 25, 8, 0)},
      // In the gap: the first moment after it, 03:00 summer time.
      {{sundays, 2 * 60 + 30, 9 * 60}, utc(2026, 3, 28, 23, 0), utc(2026, 3, 29, 1, 0)},
      // In the repeated hour: its first occurrence, still summer time.
      {{sundays, 2 * 60 + 30, 9 * 60}, utc(2026, 10, 24, 23, 0), utc(2026, 10, 25, 0, 30)},
      // An overnight span ends at 06:00 on the new offset.
      {{Schedule::bit(Day::saturday), 22 * 60, 6 * 60}, utc(2026, 3, 28, 22, 0), utc(2026, 3, 29, 4, 0)},
      // Without a span this week, next week's.
      {{mondays, 9 * 60, 17 * 60}, utc(2026, 1, 5, 16, 0), utc(2026, 1, 12, 8, 0)},
      {{0, 9 * 60, 17 * 60}, utc(2026, 1, 5, 16, 0), Date{-1}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.schedule.nextBoundary(c.after, berlin()).value_or(Date{-1}), c.next)
        << c.schedule.start << "-" << c.schedule.end << " after " << c.after.secondsSince1970;
  }
}

TEST(ScheduleTest, HoldsUntilTheEndOfSpansThatFollowWithoutABreak) {
  const struct {
    Schedule schedule;
    Date until;
  } cases[] = {
      {{weekdays, 9 * 60, 18 * 60}, utc(2026, 1, 5, 17, 0)},
      {{Schedule::allWeekdays & ~sundays, 0, 0}, utc(2026, 1, 10, 23, 0)},  // Monday to Saturday, whole days
      {{Schedule::allWeekdays, 0, 0}, Date{-1}},                              // never
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.schedule.holdsUntil(utc(2026, 1, 5, 12, 0), berlin()).value_or(Date{-1}), c.until);
  }
}

}  // namespace
}  // namespace wakeloft
