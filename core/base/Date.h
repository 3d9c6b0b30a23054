#pragma once

#include <cmath>
#include <compare>

namespace wakeloft {

// A wall-clock instant, held the way the platform holds it: seconds since
// 1970-01-01 00:00:00 UTC in a double.
struct Date {
  double secondsSince1970 = 0;

  static constexpr Date fromSecondsSince1970(double seconds) { return Date{seconds}; }

  // The platform's distantFuture: 4001-01-01T00:00:00Z, the latest instant
  // Wakeloft will ever store or arm a timer for.
  static constexpr Date distantFuture() { return Date{64092211200.0}; }

  constexpr Date adding(double seconds) const { return Date{secondsSince1970 + seconds}; }
  constexpr double secondsSince(Date earlier) const { return secondsSince1970 - earlier.secondsSince1970; }

  friend constexpr bool operator==(Date, Date) = default;
  friend constexpr auto operator<=>(Date a, Date b) { return a.secondsSince1970 <=> b.secondsSince1970; }
};

}  // namespace wakeloft
