#pragma once

#include <optional>

#include "session/AwakeDuration.h"

namespace wakeloft {

// What the panel's header says to VoiceOver: off, on, or on with the time
// left in whole minutes.
class SpokenStatus {
 public:
  enum class Kind { timeLeft, off, on, lessThanAMinuteLeft };

  static SpokenStatus timeLeft(AwakeDuration left) { return SpokenStatus(Kind::timeLeft, left); }
  static SpokenStatus off() { return SpokenStatus(Kind::off, {}); }
  static SpokenStatus on() { return SpokenStatus(Kind::on, {}); }
  static SpokenStatus lessThanAMinuteLeft() { return SpokenStatus(Kind::lessThanAMinuteLeft, {}); }

  // `remaining` is empty when the session has no deadline. Time is rounded
  // down to whole minutes, so it is never told as more than is left; under a
  // minute, or not a number, is `lessThanAMinuteLeft`.
  static SpokenStatus describing(bool isOn, std::optional<double> remaining);

  Kind kind() const { return kind_; }
  // The time left of `timeLeft`; nothing for the other cases.
  std::optional<AwakeDuration> left() const {
    return kind_ == Kind::timeLeft ? std::optional<AwakeDuration>(left_) : std::nullopt;
  }

  friend bool operator==(const SpokenStatus& a, const SpokenStatus& b) {
    return a.kind_ == b.kind_ && (a.kind_ != Kind::timeLeft || a.left_ == b.left_);
  }

 private:
  SpokenStatus(Kind kind, AwakeDuration left) : kind_(kind), left_(left) {}

  Kind kind_;
  AwakeDuration left_;
};

}  // namespace wakeloft
