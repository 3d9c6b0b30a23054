#pragma once

#include <sys/types.h>

#include <string>

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

  friend bool operator==(const AssertionHolder&, const AssertionHolder&) = default;
};

}  // namespace wakeloft
