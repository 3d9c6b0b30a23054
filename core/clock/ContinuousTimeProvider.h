#pragma once

namespace wakeloft {

// Seconds on a clock that keeps counting while the machine sleeps and is
// never set, so a session's real length survives sleep and clock changes.
class ContinuousTimeProvider {
 public:
  virtual ~ContinuousTimeProvider() = default;
  virtual double continuousTime() const = 0;
};

}  // namespace wakeloft
