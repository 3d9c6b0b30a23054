#pragma once

#include <memory>

#include "automatic/AutomaticSessionController.h"
#include "automatic/ScreenLockPolicy.h"
#include "automatic/ScreenOnController.h"
#include "lid/DeepwakeAutomationConsent.h"
#include "lid/LidAwakeController.h"
#include "prefs/LoginItemController.h"
#include "prefs/PresetDurationsController.h"
#include "session/AwakeController.h"
#include "session/ProcessBindingController.h"

namespace wakeloft {

// The four long-lived controllers the interface reads and drives, in the
// order the app builds them, then the process a session may be bound to by
// automation and whether automation may turn Deepwake on (both absent where
// no automation reaches the app), and the sessions the automatic rules keep
// (absent where the system tells no running apps).
struct Controllers {
  std::shared_ptr<AwakeController> awake;
  std::shared_ptr<LidAwakeController> lid;
  std::shared_ptr<LoginItemController> loginItem;
  std::shared_ptr<PresetDurationsController> presets;
  std::shared_ptr<ProcessBindingController> binding = nullptr;
  std::shared_ptr<DeepwakeAutomationConsent> consent = nullptr;
  // The display kept on beside the session, and whether a lock ends
  // sessions; absent where the app does not build them.
  std::shared_ptr<ScreenOnController> screenOn = nullptr;
  std::shared_ptr<ScreenLockPolicy> screenLock = nullptr;
  // The sessions the automatic rules keep; absent until the app builds them.
  std::shared_ptr<AutomaticSessionController> automatic = nullptr;
};

}  // namespace wakeloft
