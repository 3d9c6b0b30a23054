#include "automatic/Schedule.h"

#include <algorithm>
#include <cmath>

namespace wakeloft {

namespace {

constexpr double secondsPerDay = 86'400;

struct Span {
  Date start;
  Date end;
};

// Days since 1970-01-01 of the local date at `now`.
long long localDay(Date now, const TimeZone& zone) {
  return static_cast<long long>(std::floor((now.secondsSince1970 + zone.secondsFromGMT(now)) / secondsPerDay));
}

Schedule::Weekday weekdayOf(long long day) {
  // 1970-01-01 was a Thursday.
  const long long fromMonday = ((day + 3) % 7 + 7) % 7;
  return static_cast<Schedule::Weekday>(fromMonday);
}

// The instant a local wall-clock time names, given as seconds since 1970 as
// if local time were UTC.
Date instantOf(double local, const TimeZone& zone) {
  // A zone changes its offset at most once in a day around here.
  const int before = zone.secondsFromGMT(Date{local - secondsPerDay});
  const int after = zone.secondsFromGMT(Date{local + secondsPerDay});
  const auto names = [&](double instant) { return instant + zone.secondsFromGMT(Date{instant}) == local; };
  const double early = local - std::max(before, after);
  const double late = local - std::min(before, after);
  // In a repeated hour both name it: the first occurrence is the earlier.
  if (names(early)) return Date{early};
  if (names(late)) return Date{late};
  // Skipped by a change: the first instant whose wall clock is past it is
  // the change itself, found to the second.
  double skipped = early;
  double past = late;
  while (past - skipped > 1) {
    const double middle = std::floor((skipped + past) / 2);
    (middle + zone.secondsFromGMT(Date{middle}) >= local ? past : skipped) = middle;
  }
  return Date{past};
}

std::optional<Span> spanOn(const Schedule& schedule, long long day, const TimeZone& zone) {
  if (!schedule.includes(weekdayOf(day))) return std::nullopt;
  const double midnight = static_cast<double>(day) * secondsPerDay;
  const double start = midnight + schedule.start * 60.0;
  double end = midnight + schedule.end * 60.0;
  if (schedule.end <= schedule.start) end += secondsPerDay;
  return Span{instantOf(start, zone), instantOf(end, zone)};
}

// The span holding at `now`, if any: today's, or yesterday's across midnight.
std::optional<Span> holdingSpan(const Schedule& schedule, Date now, const TimeZone& zone) {
  const long long today = localDay(now, zone);
  for (long long day = today - 1; day <= today; ++day) {
    const auto span = spanOn(schedule, day, zone);
    if (span && span->start <= now && now < span->end) return span;
  }
  return std::nullopt;
}

}  // namespace

bool Schedule::holds(Date now, const TimeZone& zone) const {
  return isValid() && std::isfinite(now.secondsSince1970) && holdingSpan(*this, now, zone).has_value();
}

std::optional<Date> Schedule::nextBoundary(Date now, const TimeZone& zone) const {
  if (!isValid() || !std::isfinite(now.secondsSince1970)) return std::nullopt;
  const long long today = localDay(now, zone);
  std::optional<Date> next;
  // A week and a day ahead reaches the next span of any chosen weekday.
  for (long long day = today - 1; day <= today + 8; ++day) {
    const auto span = spanOn(*this, day, zone);
    if (!span) continue;
    for (const Date boundary : {span->start, span->end}) {
      if (boundary > now && (!next || boundary < *next)) next = boundary;
    }
  }
  return next;
}

}  // namespace wakeloft
