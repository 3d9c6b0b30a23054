#pragma once

#include "lid/LidSleepBlocker.h"

namespace wakeloft {

// Stands in where no helper can exist: every renewal fails with
// helperUnavailable, and a revoke has nothing to give back.
class UnavailableLidSleepBlocker final : public LidSleepBlocker {
 public:
  void renew(Date until, Completion completion) override;
  void revoke(Completion completion) override;
  bool isEngaged() const override { return false; }
};

}  // namespace wakeloft
