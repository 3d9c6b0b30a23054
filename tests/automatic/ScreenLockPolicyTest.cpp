// "Stop when the screen locks", over every kind of session. The one rule:
// an external display.

#include "automatic/ScreenLockPolicy.h"

#include <gtest/gtest.h>

#include "automatic/InMemoryAutomaticSessionStore.h"
#include "automatic/InMemoryRunningApplications.h"
#include "session/InMemoryScreenLockNotifier.h"
#include "support/ManualTimeZone.h"
#include "ui/TestControllers.h"

namespace wakeloft {
namespace {

using namespace testing;
using Event = ScreenLockNotifier::Event;
using Release = ProcessBindingController::Release;

enum class Kind { manual, automatic, processBound };

// The app after a launch, with the screen unlocked.
struct LockedApp {
  explicit LockedApp(bool stopping = true) {
    store->setStopsWhenScreenLocks(stopping);
    AutomaticRules::Settings display;
    display.whileExternalDisplay = true;
    store->setSettings(display);
    app.start();
    automatic = std::make_shared<AutomaticSessionController>(
        app.awake, app.binding, store,
        AutomaticSessionController::FactSources{app.machine, std::make_shared<ManualConditionsNotifier>(),
                                                std::make_shared<InMemoryRunningApplications>(),
                                                std::make_shared<ManualTimeZoneProvider>(nullptr)},
        app.clocks.dates, app.clocks.continuous, std::make_shared<ManualDeadlineScheduler>(),
        std::make_shared<ManualRecheckNotifier>());
    policy = std::make_unique<ScreenLockPolicy>(lock, app.awake, app.binding, app.lid, automatic, store);
    app.binding->observeReleases([this](const RunningProcess& process, Release why) {
      releases.emplace_back(process.identity.pid, why);
    });
  }
  void begin(Kind kind) {
    app.machine->current.hasExternalDisplay = kind == Kind::automatic;
    automatic->evaluate();
    if (kind == Kind::manual) app.awake->turnOn(std::nullopt);
    if (kind == Kind::processBound) {
      app.processes->start(4242, 7, "make");
      app.binding->hold(4242, std::nullopt);
    }
  }

  TestControllers app;
  std::shared_ptr<InMemoryScreenLockNotifier> notifier = std::make_shared<InMemoryScreenLockNotifier>();
  std::shared_ptr<ScreenLockState> lock = std::make_shared<ScreenLockState>(notifier);
  std::shared_ptr<InMemoryAutomaticSessionStore> store = std::make_shared<InMemoryAutomaticSessionStore>();
  std::shared_ptr<AutomaticSessionController> automatic;
  std::unique_ptr<ScreenLockPolicy> policy;
  std::vector<std::pair<pid_t, Release>> releases;
};

TEST(ScreenLockPolicyTest, ALockOrAUserSwitchEndsEveryKindOfSessionExceptUnderDeepwake) {
  using Releases = std::vector<std::pair<pid_t, Release>>;
  for (const auto event : {Event::screenLocked, Event::sessionSwitchedOut}) {
    for (const auto kind : {Kind::manual, Kind::automatic, Kind::processBound}) {
      for (const bool deepwake : {false, true}) {
        LockedApp mac;
        mac.begin(kind);
        if (deepwake) mac.app.turnOnDeepwake();
        mac.notifier->post(event);
        const auto row = ::testing::Message() << int(event) << "/" << int(kind) << "/" << deepwake;
        EXPECT_EQ(mac.app.awake->isOn(), deepwake) << row;
        EXPECT_FALSE(mac.store->isSuppressed()) << row;
        const auto released = kind == Kind::processBound && !deepwake ? Releases{{4242, Release::screenLocked}}
                                                                      : Releases{};
        EXPECT_EQ(mac.releases, released) << row;
      }
    }
  }
}

TEST(ScreenLockPolicyTest, NothingEndsWhileTheSettingIsOff) {
  LockedApp mac(/*stopping=*/false);
  mac.begin(Kind::manual);
  mac.notifier->post(Event::screenLocked);
  EXPECT_TRUE(mac.app.awake->isOn());
}

TEST(ScreenLockPolicyTest, AutomaticSessionsStayAwayWhileLockedAndComeBackOnUnlock) {
  LockedApp mac;
  mac.begin(Kind::manual);
  mac.app.machine->current.hasExternalDisplay = true;
  mac.notifier->post(Event::screenLocked);
  mac.automatic->evaluate();
  EXPECT_FALSE(mac.app.awake->isRequested());
  mac.notifier->post(Event::screenUnlocked);
  EXPECT_TRUE(mac.app.awake->isOn() && mac.app.awake->isAutomatic());
}

TEST(ScreenLockStateTest, LockedUntilBothTheScreenIsUnlockedAndTheSessionIsBack) {
  auto notifier = std::make_shared<InMemoryScreenLockNotifier>();
  ScreenLockState lock(notifier);
  EXPECT_FALSE(lock.isLocked());
  const std::pair<Event, bool> steps[] = {
      {Event::screenLocked, true},  {Event::sessionSwitchedOut, true}, {Event::screenUnlocked, true},
      {Event::sessionSwitchedIn, false},
  };
  for (const auto& [event, locked] : steps) {
    notifier->post(event);
    EXPECT_EQ(lock.isLocked(), locked) << int(event);
  }
}

}  // namespace
}  // namespace wakeloft
