#pragma once

#include "helper/Clamshell.h"

namespace wakeloft {

// The lid as the root power domain reports it in the I/O Registry, and the
// power-management request to sleep.
class IOKitClamshell final : public Clamshell {
 public:
  std::optional<bool> lidIsClosed() override;
  std::optional<bool> closingCausesSleep() override;
  void requestSleep() override;
};

}  // namespace wakeloft
