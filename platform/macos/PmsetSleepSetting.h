#pragma once

#include "lease/SystemSleepSetting.h"

namespace wakeloft {

// The system's sleep-disable setting as the power-settings tool reads and
// writes it (`pmset -a disablesleep`, `pmset -g`). Each call runs the tool
// and waits for it on the calling thread, for at most the lease's write or
// read limit; a tool that takes longer is killed and the call throws.
class PmsetSleepSetting final : public SystemSleepSetting {
 public:
  void writeDisabled(bool disabled) override;
  bool readDisabled() override;
};

}  // namespace wakeloft
