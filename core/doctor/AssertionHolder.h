#pragma once

#include <sys/types.h>

#include <array>
#include <string>
#include <string_view>

namespace wakeloft {

// A process holding a power assertion that keeps the Mac or its display
// awake, as the doctor lists it.
struct AssertionHolder {
  pid_t pid = 0;
  // Its command name; empty when the process could not be read.
  std::string name;
  // The assertion's type, as the system names it: "PreventUserIdleSystemSleep".
  std::string type;
  // The name the holder gave the assertion.
  std::string reason;

  // The assertion types that keep the Mac or its display from idle sleep,
  // the ones the doctor lists; the system has others (for its own work).
  static constexpr std::array<std::string_view, 5> keepingAwakeTypes{
      "PreventUserIdleSystemSleep", "PreventSystemSleep", "PreventUserIdleDisplaySleep", "NoIdleSleepAssertion",
      "NoDisplaySleepAssertion"};
  static constexpr bool keepsAwake(std::string_view type) {
    for (const auto listed : keepingAwakeTypes) {
      if (listed == type) return true;
    }
    return false;
  }

  friend bool operator==(const AssertionHolder&, const AssertionHolder&) = default;
};

}  // namespace wakeloft
