#pragma once

#include <memory>

#include "lid/LidAwakeController.h"
#include "prefs/LoginItemController.h"
#include "prefs/PresetDurationsController.h"
#include "session/AwakeController.h"

namespace wakeloft {

// The four long-lived controllers the interface reads and drives, in the
// order the app builds them.
struct Controllers {
  std::shared_ptr<AwakeController> awake;
  std::shared_ptr<LidAwakeController> lid;
  std::shared_ptr<LoginItemController> loginItem;
  std::shared_ptr<PresetDurationsController> presets;
};

}  // namespace wakeloft
