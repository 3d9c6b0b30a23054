#pragma once

#include <optional>

#include "base/Date.h"

namespace wakeloft {

// What the user asked for: stay awake until a wall-clock date, no session, or
// stay awake with no timer.
class AwakeIntent {
 public:
  enum class Kind { until, off, indefinite };

  static AwakeIntent until(Date date) { return AwakeIntent(Kind::until, date); }
  static AwakeIntent off() { return AwakeIntent(Kind::off, {}); }
  static AwakeIntent indefinite() { return AwakeIntent(Kind::indefinite, {}); }

  Kind kind() const { return kind_; }
  // The deadline of `until`; nothing for the other cases.
  std::optional<Date> date() const { return kind_ == Kind::until ? std::optional<Date>(date_) : std::nullopt; }

  // Finite and not later than distantFuture.
  static bool isUsable(Date date);
  // `now` plus `seconds`, or nothing when that is not a usable date.
  static std::optional<Date> deadline(double seconds, Date now);

  friend bool operator==(const AwakeIntent& a, const AwakeIntent& b) {
    return a.kind_ == b.kind_ && (a.kind_ != Kind::until || a.date_ == b.date_);
  }

 private:
  AwakeIntent(Kind kind, Date date) : kind_(kind), date_(date) {}

  Kind kind_;
  Date date_;
};

}  // namespace wakeloft
