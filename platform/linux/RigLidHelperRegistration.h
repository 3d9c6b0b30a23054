#pragma once

#include "lid/LidHelperRegistration.h"

namespace wakeloft {

// The lease rig is started by hand and needs nobody's approval: there is
// nothing to register, and a rig that runs may be used.
class RigLidHelperRegistration final : public LidHelperRegistration {
 public:
  LidHelperStatus status() const override { return LidHelperStatus::enabled; }
  void registerHelper() override {}
  // The rig stops when its owner stops it.
  void unregisterHelper() override {}
};

}  // namespace wakeloft
