#pragma once

#include "session/PowerAssertions.h"

namespace wakeloft {

// IOKit's power-management assertions.
class IOKitPowerAssertions final : public PowerAssertions {
 public:
  Creation create(const std::string& type, std::uint32_t level, const std::string& name) override;
  std::int32_t release(std::uint32_t assertionID) override;
  bool isHeld(std::uint32_t assertionID, const std::string& type, const std::string& name) override;
};

}  // namespace wakeloft
