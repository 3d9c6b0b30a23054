#pragma once

#include <cstdint>
#include <string>

namespace wakeloft {

// The power-management calls the sleep blocker makes. IOKit answers them
// on macOS; tests answer them with a recording fake, so the blocker's rules
// run here without the system.
class PowerAssertions {
 public:
  struct Creation {
    std::int32_t code;          // the system's IOReturn; 0 is success
    std::uint32_t assertionID;  // meaningful only on success
  };

  virtual ~PowerAssertions() = default;

  virtual Creation create(const std::string& type, std::uint32_t level, const std::string& name) = 0;
  // Returns the system's IOReturn for the release.
  virtual std::int32_t release(std::uint32_t assertionID) = 0;
  // Whether the system still holds the assertion created under this ID, of
  // this type and name: it may drop one behind the app's back.
  virtual bool isHeld(std::uint32_t assertionID, const std::string& type, const std::string& name) = 0;
};

}  // namespace wakeloft
