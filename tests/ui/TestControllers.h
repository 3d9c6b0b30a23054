#pragma once

#include <memory>

#include "base/InMemoryDefaultsDomain.h"
#include "lid/DeepwakeAutomationConsent.h"
#include "lid/InMemoryDeepwakeGuardrailStore.h"
#include "lid/InMemoryLidAwakeStore.h"
#include "lid/InMemoryLidSleepBlocker.h"
#include "lid/LidAwakeController.h"
#include "lid/MachineConditions.h"
#include "lid/MachineConditionsNotifier.h"
#include "prefs/InMemoryLoginItem.h"
#include "prefs/InMemoryPresetDurationStore.h"
#include "prefs/LoginItemController.h"
#include "prefs/PresetDurationsController.h"
#include "session/AwakeController.h"
#include "session/InMemoryAwakeIntentStore.h"
#include "session/InMemoryProcessBindingStore.h"
#include "session/InMemorySleepBlocker.h"
#include "session/ProcessBindingController.h"
#include "support/ManualClocks.h"
#include "support/ManualMachineConditions.h"
#include "support/ManualProcesses.h"
#include "support/ManualScheduling.h"
#include "ui/Controllers.h"

namespace wakeloft::testing {

// The app's real controllers over in-memory system parts and manual clocks,
// for tests of what the interface shows and does. The parts can be set up
// before `start` builds the controllers.
struct TestControllers {
  ManualMachineClocks clocks;
  std::shared_ptr<InMemorySleepBlocker> assertion = std::make_shared<InMemorySleepBlocker>();
  std::shared_ptr<InMemoryAwakeIntentStore> intents = std::make_shared<InMemoryAwakeIntentStore>();
  std::shared_ptr<ManualDeadlineScheduler> sessionTimer = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<ManualRecheckNotifier> recheck = std::make_shared<ManualRecheckNotifier>();
  std::shared_ptr<InMemoryLidSleepBlocker> helper = std::make_shared<InMemoryLidSleepBlocker>();
  std::shared_ptr<InMemoryLidAwakeStore> heatWarning = std::make_shared<InMemoryLidAwakeStore>(true);
  std::shared_ptr<SettableMachineConditions> machine = std::make_shared<SettableMachineConditions>();
  std::shared_ptr<ManualConditionsNotifier> conditionsNotifier = std::make_shared<ManualConditionsNotifier>();
  std::shared_ptr<ManualDeadlineScheduler> leaseTimer = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<ManualDeadlineScheduler> deepwakeEnd = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<InMemoryDeepwakeGuardrailStore> guardrails = std::make_shared<InMemoryDeepwakeGuardrailStore>();
  std::shared_ptr<InMemoryLoginItem> loginItemService =
      std::make_shared<InMemoryLoginItem>(LoginItemState::disabled, /*isAtStableLocation=*/true);
  std::shared_ptr<InMemoryPresetDurationStore> presetStore = std::make_shared<InMemoryPresetDurationStore>();
  std::shared_ptr<InMemoryProcessBindingStore> bindingStore = std::make_shared<InMemoryProcessBindingStore>();
  std::shared_ptr<SettableProcessTable> processes = std::make_shared<SettableProcessTable>();
  std::shared_ptr<ManualProcessExitWatcher> processWatcher = std::make_shared<ManualProcessExitWatcher>();
  std::shared_ptr<ManualDeadlineScheduler> holdTimer = std::make_shared<ManualDeadlineScheduler>();
  InMemoryDefaultsDomain defaults;
  bool translocated = false;

  std::shared_ptr<AwakeController> awake;
  std::shared_ptr<LidAwakeController> lid;
  std::shared_ptr<LoginItemController> loginItem;
  std::shared_ptr<PresetDurationsController> presets;
  std::shared_ptr<ProcessBindingController> binding;
  std::shared_ptr<DeepwakeAutomationConsent> consent;

  // As at launch: the awake controller restores what the store holds.
  void start() {
    awake = std::make_shared<AwakeController>(assertion, intents, clocks.dates, clocks.continuous, sessionTimer,
                                              recheck, /*restoringPreviousState=*/true);
    lid = std::make_shared<LidAwakeController>(awake, helper, heatWarning, machine, conditionsNotifier, clocks.dates,
                                               leaseTimer, deepwakeEnd, guardrails, translocated);
    loginItem = std::make_shared<LoginItemController>(loginItemService, /*repairingRegistration=*/true);
    presets = std::make_shared<PresetDurationsController>(presetStore);
    binding = std::make_shared<ProcessBindingController>(awake, bindingStore, processes, processWatcher, clocks.dates,
                                                         holdTimer, true);
    consent = std::make_shared<DeepwakeAutomationConsent>(defaults);
  }

  Controllers controllers() const { return {awake, lid, loginItem, presets, binding, consent}; }

  // Deepwake on and confirmed by the helper, riding on a session of `length`.
  void turnOnDeepwake(std::optional<double> length = 7200) {
    const bool holding = helper->holdsReplies;
    helper->holdsReplies = false;
    lid->turnOnJoiningSessionOr(length);
    helper->holdsReplies = holding;
  }
};

}  // namespace wakeloft::testing
