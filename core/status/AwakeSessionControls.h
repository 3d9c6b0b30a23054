#pragma once

#include <functional>
#include <optional>

#include "base/Date.h"

namespace wakeloft {

// What the panel offers under the status: the preset durations, or a way to
// cancel the running timer.
class AwakeSessionControls {
 public:
  enum class Case { presets, cancelTimer };
  using enum Case;

  constexpr AwakeSessionControls(Case value) : value_(value) {}

  // Only a running timed session has a timer to cancel; a deadline left over
  // from a session that is off does not count.
  static AwakeSessionControls shown(bool isOn, std::optional<Date> activeUntil) {
    return isOn && activeUntil ? cancelTimer : presets;
  }

  constexpr Case value() const { return value_; }

  friend constexpr bool operator==(AwakeSessionControls, AwakeSessionControls) = default;

 private:
  Case value_;
};

}  // namespace wakeloft

template <>
struct std::hash<wakeloft::AwakeSessionControls> {
  std::size_t operator()(wakeloft::AwakeSessionControls c) const noexcept {
    return std::hash<wakeloft::AwakeSessionControls::Case>{}(c.value());
  }
};
