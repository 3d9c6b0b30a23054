#include "ui/AppControllers.h"

#include "automatic/UserDefaultsAutomaticSessionStore.h"
#include "base/MainThread.h"
#include "helper/LidHelperService.h"
#include "lease/LidSleepLease.h"
#include "lid/UserDefaultsDeepwakeGuardrailStore.h"
#include "lid/UserDefaultsLidAwakeStore.h"
#include "prefs/Translocation.h"
#include "prefs/UserDefaultsPresetDurationStore.h"
#include "session/IOKitSleepBlocker.h"
#include "session/UserDefaultsAwakeIntentStore.h"
#include "session/UserDefaultsProcessBindingStore.h"
#include "session/UserDefaultsScreenOnStore.h"

namespace wakeloft::AppControllers {

Controllers live(const SystemParts& parts, DefaultsDomain& defaults) {
  requireMainThread("AppControllers::live");
  auto blocker = std::make_shared<IOKitSleepBlocker>(parts.powerAssertions(), IOKitSleepBlocker::appReason);
  auto intents = std::make_shared<UserDefaultsAwakeIntentStore>(defaults);
  auto dates = parts.dates();
  auto continuous = parts.continuousTime();
  auto scheduler = parts.deadlineScheduler();
  auto bindingDates = dates;
  auto recheck = parts.recheckNotifier();
  auto awake = std::make_shared<AwakeController>(std::move(blocker), std::move(intents), std::move(dates),
                                                 std::move(continuous), std::move(scheduler), std::move(recheck),
                                                 /*restoringPreviousState=*/true);

  auto lid = deepwake(awake, defaults, parts);

  // Registering again points the system at this copy of the app after a move
  // or an update.
  auto loginItem = std::make_shared<LoginItemController>(parts.loginItem(), /*repairingRegistration=*/true);

  auto presets =
      std::make_shared<PresetDurationsController>(std::make_shared<UserDefaultsPresetDurationStore>(defaults));

  auto processes = parts.processTable();
  auto watcher = parts.processExitWatcher();
  auto binding = std::make_shared<ProcessBindingController>(
      awake, std::make_shared<UserDefaultsProcessBindingStore>(defaults), std::move(processes), std::move(watcher),
      std::move(bindingDates), parts.deadlineScheduler(), /*restoringPreviousState=*/true);

  auto consent = std::make_shared<DeepwakeAutomationConsent>(defaults);

  std::shared_ptr<AutomaticSessionController> automatic;
  if (parts.runningApplications) {
    AutomaticSessionController::FactSources sources{parts.machineConditions(), parts.conditionsNotifier(),
                                                    parts.runningApplications(), parts.timeZones()};
    automatic = std::make_shared<AutomaticSessionController>(
        awake, binding, std::make_shared<UserDefaultsAutomaticSessionStore>(defaults), std::move(sources),
        parts.dates(), parts.continuousTime(), parts.deadlineScheduler(), parts.recheckNotifier());
  }
  auto lock = std::make_shared<ScreenLockState>(parts.screenLockNotifier());
  auto display = std::make_shared<IOKitSleepBlocker>(parts.powerAssertions(), IOKitSleepBlocker::appReason,
                                                     IOKitSleepBlocker::displayAssertionType);
  auto screenMachine = parts.machineConditions();
  auto screenMachineChanges = parts.conditionsNotifier();
  auto screenRecheck = parts.recheckNotifier();
  auto screenOn = std::make_shared<ScreenOnController>(
      awake, std::move(display), std::make_shared<UserDefaultsScreenOnStore>(defaults), std::move(screenMachine),
      std::move(screenMachineChanges), lock, std::move(screenRecheck));
  auto screenLock = std::make_shared<ScreenLockPolicy>(lock, awake, binding, lid, automatic,
                                                       std::make_shared<UserDefaultsAutomaticSessionStore>(defaults));
  return {std::move(awake),    std::move(lid),     std::move(loginItem),  std::move(presets),  std::move(binding),
          std::move(consent),  std::move(screenOn), std::move(screenLock), std::move(automatic)};
}

std::shared_ptr<LidAwakeController> deepwake(std::shared_ptr<AwakeController> riding, DefaultsDomain& defaults,
                                             const SystemParts& parts) {
  requireMainThread("AppControllers::deepwake");
  const auto bundle = parts.bundlePath();
  const bool translocated = bundle && Translocation::isTranslocated(*bundle);
  auto registration = parts.helperRegistration(LidHelperService::plistName);
  // The helper signs with its label as identifier; only a helper of the app's
  // own team is spoken to.
  auto requirement = LidHelperService::codeRequirement(LidHelperService::label, parts.teamIdentifier());
  auto blocker = parts.lidSleepBlocker(std::move(registration), std::move(requirement), LidSleepLease::replyTimeout);
  auto store = std::make_shared<UserDefaultsLidAwakeStore>(defaults);
  auto machine = parts.machineConditions();
  auto conditionsNotifier = parts.conditionsNotifier();
  auto dates = parts.dates();
  auto renewals = parts.deadlineScheduler();
  auto sessionEnd = parts.deadlineScheduler();
  auto guardrails = std::make_shared<UserDefaultsDeepwakeGuardrailStore>(defaults);
  return std::make_shared<LidAwakeController>(std::move(riding), std::move(blocker), std::move(store),
                                              std::move(machine), std::move(conditionsNotifier), std::move(dates),
                                              std::move(renewals), std::move(sessionEnd), std::move(guardrails),
                                              translocated);
}

}  // namespace wakeloft::AppControllers
