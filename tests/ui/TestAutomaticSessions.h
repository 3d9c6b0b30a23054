#pragma once

#include <memory>

#include "TestControllers.h"
#include "automatic/AutomaticSessionController.h"
#include "automatic/InMemoryAutomaticSessionStore.h"
#include "automatic/InMemoryRunningApplications.h"
#include "automatic/ScreenLockSetting.h"
#include "prefs/SystemTimeZone.h"
#include "support/ManualTimeZone.h"

namespace wakeloft::testing {

struct ManualScreenLockSetting final : ScreenLockSetting {
  bool stops = false;
  bool stopsWhenScreenLocks() const override { return stops; }
  void setStopsWhenScreenLocks(bool value) override { stops = value; }
  bool isForced() const override { return false; }
};

// The automatic controller over the test controllers, started with them.
struct TestAutomaticSessions {
  TestControllers app;
  std::shared_ptr<InMemoryAutomaticSessionStore> store = std::make_shared<InMemoryAutomaticSessionStore>();
  std::shared_ptr<AutomaticSessionController> automatic;

  void start() {
    app.start();
    const AutomaticSessionController::FactSources sources{
        app.machine, std::make_shared<ManualConditionsNotifier>(), std::make_shared<InMemoryRunningApplications>(),
        std::make_shared<ManualTimeZoneProvider>(std::make_shared<const SystemTimeZone>("Europe/Berlin"))};
    automatic = std::make_shared<AutomaticSessionController>(
        app.awake, app.binding, store, sources, app.clocks.dates, app.clocks.continuous,
        std::make_shared<ManualDeadlineScheduler>(), std::make_shared<ManualRecheckNotifier>());
  }
};

}  // namespace wakeloft::testing
