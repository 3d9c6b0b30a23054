#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TestControllers.h"
#include "automatic/InMemoryRunningApplications.h"
#include "automatic/UserDefaultsAutomaticSessionStore.h"
#include "lid/UserDefaultsLidAwakeStore.h"
#include "prefs/SystemTimeZone.h"
#include "support/CivilTime.h"
#include "support/ManualTimeZone.h"
#include "session/InMemoryScreenLockNotifier.h"
#include "support/RecordingPowerAssertions.h"
#include "ui/AppControllers.h"
#include "ui/AwakePanelContent.h"

namespace wakeloft::testing {

// The app's controllers as launch builds them over in-memory parts, with
// every automatic rule enabled: an external display, a power adapter, Xcode
// running, and Mondays 09:00-17:00 in Berlin. The facts hold from before the
// launch.
struct AutomaticApp {
  enum Fact { display = 1, adapter = 2, xcode = 4, mondayMorning = 8 };

  void launch(int facts) {
    machine->current.hasExternalDisplay = facts & display;
    machine->current.isOnBattery = !(facts & adapter);
    if (facts & xcode) apps->launch("com.apple.dt.Xcode");
    clocks.dates->current = facts & mondayMorning ? utc(2026, 1, 5, 9) : utc(2026, 1, 5, 6);  // 10:00 or 07:00
    defaults.set(UserDefaultsLidAwakeStore::key, true);  // the heat warning, acknowledged
    UserDefaultsAutomaticSessionStore(defaults).setSettings(
        {true, true, true, {{"com.apple.dt.Xcode", "Xcode", ""}}, true, {0x01, 540, 1020}});
    const AppControllers::SystemParts parts{
        .powerAssertions = [] { return std::make_shared<RecordingPowerAssertions>(); },
        .dates = [this] { return clocks.dates; },
        .continuousTime = [this] { return clocks.continuous; },
        .deadlineScheduler = [] { return std::make_shared<ManualDeadlineScheduler>(); },
        .recheckNotifier = [] { return std::make_shared<ManualRecheckNotifier>(); },
        .bundlePath = [] { return std::optional<std::string>("/Applications/Wakeloft.app"); },
        .helperRegistration = [](std::string_view) { return std::shared_ptr<LidHelperRegistration>(); },
        .teamIdentifier = [] { return std::optional<std::string>(); },
        .lidSleepBlocker = [this](auto, auto, double) { return helper; },
        .machineConditions = [this] { return machine; },
        .conditionsNotifier = [this] { return notifiers.emplace_back(std::make_shared<ManualConditionsNotifier>()); },
        .loginItem = [] { return std::make_shared<InMemoryLoginItem>(LoginItemState::disabled, true); },
        .processTable = [] { return std::make_shared<SettableProcessTable>(); },
        .processExitWatcher = [] { return std::make_shared<ManualProcessExitWatcher>(); },
        .screenLockNotifier = [] { return std::make_shared<InMemoryScreenLockNotifier>(); },
        .runningApplications = [this] { return apps; },
        .timeZones =
            [] { return std::make_shared<ManualTimeZoneProvider>(std::make_shared<SystemTimeZone>("Europe/Berlin")); },
    };
    app = AppControllers::live(parts, defaults);
  }
  AwakePanelContent panel() const { return AwakePanelContent::current(app, "en_US", {14, 5, 0}); }
  void act(const PanelAction& action) { perform(action, app, nullptr); }
  void postChanges() {
    for (const auto& notifier : notifiers) notifier->post();
  }

  InMemoryDefaultsDomain defaults;
  ManualMachineClocks clocks;
  std::shared_ptr<SettableMachineConditions> machine = std::make_shared<SettableMachineConditions>();
  std::shared_ptr<InMemoryRunningApplications> apps = std::make_shared<InMemoryRunningApplications>();
  std::shared_ptr<InMemoryLidSleepBlocker> helper = std::make_shared<InMemoryLidSleepBlocker>();
  // The last made: the automatic session's own.
  // One for each controller that watches the machine.
  std::vector<std::shared_ptr<ManualConditionsNotifier>> notifiers;
  Controllers app;
};

}  // namespace wakeloft::testing
