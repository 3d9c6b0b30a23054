#pragma once

namespace wakeloft {

// The running system's version numbers, as the platform reports them.
struct OperatingSystemVersion {
  long majorVersion = 0;
  long minorVersion = 0;
  long patchVersion = 0;

  friend bool operator==(const OperatingSystemVersion&, const OperatingSystemVersion&) = default;
};

}  // namespace wakeloft
