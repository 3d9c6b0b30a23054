// Sessions the automatic rules keep, and how they give way to the user's.
// The rules: an external display, Xcode running, or Mondays 09:00-17:00.

#include "automatic/AutomaticSessionController.h"

#include <gtest/gtest.h>

#include "automatic/InMemoryAutomaticSessionStore.h"
#include "automatic/InMemoryRunningApplications.h"
#include "prefs/SystemTimeZone.h"
#include "session/InMemoryAwakeIntentStore.h"
#include "session/InMemoryProcessBindingStore.h"
#include "session/InMemorySleepBlocker.h"
#include "support/CivilTime.h"
#include "support/ManualClocks.h"
#include "support/ManualMachineConditions.h"
#include "support/ManualProcesses.h"
#include "support/ManualScheduling.h"
#include "support/ManualTimeZone.h"

namespace wakeloft {
namespace {

using namespace testing;
using ::testing::Test;

const auto berlin = std::make_shared<const SystemTimeZone>("Europe/Berlin");
const auto newYork = std::make_shared<const SystemTimeZone>("America/New_York");

struct AutomaticSessionControllerTest : Test {
  AutomaticSessionControllerTest() { clocks.dates->current = utc(2026, 1, 5, 6); }  // Monday, 07:00 in Berlin
  // A launch, over what the last one left behind.
  void launch(bool onSchedule = false) {
    automatic.reset();
    store->setSettings({true, false, true, {{"com.apple.dt.Xcode", "Xcode", ""}}, onSchedule, {0x01, 540, 1020}});
    awake = std::make_shared<AwakeController>(std::make_shared<InMemorySleepBlocker>(), intents, clocks.dates,
                                              clocks.continuous, timer, std::make_shared<ManualRecheckNotifier>(), true);
    binding = std::make_shared<ProcessBindingController>(awake, std::make_shared<InMemoryProcessBindingStore>(),
                                                         processes, watcher, clocks.dates, holdTimer, true);
    automatic = std::make_unique<AutomaticSessionController>(
        awake, binding, store, AutomaticSessionController::FactSources{machine, machineChanges, apps, zones},
        clocks.dates, clocks.continuous, ruleTimer, recheck);
  }
  void display(bool connected) {
    machine->current.hasExternalDisplay = connected;
    machineChanges->post();
  }
  void hold() {
    processes->start(4242, 7, "make");
    binding->hold(4242, std::nullopt);
  }
  bool isAutomatic() const { return awake->isOn() && awake->isAutomatic(); }
  // Time passes awake, and the rules' timer fires when due.
  void pass(double seconds) {
    clocks.pass(seconds);
    if (ruleTimer->pending && *ruleTimer->pending <= clocks.now()) ruleTimer->fire();
  }

  ManualMachineClocks clocks;
  std::shared_ptr<ManualTimeZoneProvider> zones = std::make_shared<ManualTimeZoneProvider>(berlin);
  std::shared_ptr<SettableMachineConditions> machine = std::make_shared<SettableMachineConditions>();
  std::shared_ptr<ManualConditionsNotifier> machineChanges = std::make_shared<ManualConditionsNotifier>();
  std::shared_ptr<InMemoryRunningApplications> apps = std::make_shared<InMemoryRunningApplications>();
  std::shared_ptr<InMemoryAwakeIntentStore> intents = std::make_shared<InMemoryAwakeIntentStore>();
  std::shared_ptr<InMemoryAutomaticSessionStore> store = std::make_shared<InMemoryAutomaticSessionStore>();
  std::shared_ptr<SettableProcessTable> processes = std::make_shared<SettableProcessTable>();
  std::shared_ptr<ManualProcessExitWatcher> watcher = std::make_shared<ManualProcessExitWatcher>();
  std::shared_ptr<ManualDeadlineScheduler> timer = std::make_shared<ManualDeadlineScheduler>(),
                                           holdTimer = std::make_shared<ManualDeadlineScheduler>(),
                                           ruleTimer = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<ManualRecheckNotifier> recheck = std::make_shared<ManualRecheckNotifier>();
  std::shared_ptr<AwakeController> awake;
  std::shared_ptr<ProcessBindingController> binding;
  std::unique_ptr<AutomaticSessionController> automatic;
};

TEST_F(AutomaticSessionControllerTest, ASessionOutlastsADisplayOrAppFlappingAndEndsAGracePeriodAfterTheRulesStop) {
  const std::function<void(AutomaticSessionControllerTest&, bool)> flappers[] = {
      [](auto& t, bool on) { t.display(on); },
      [](auto& t, bool on) { on ? t.apps->launch("com.apple.dt.Xcode") : t.apps->quit("com.apple.dt.Xcode"); },
  };
  for (const auto& flap : flappers) {
    launch();
    flap(*this, true);
    flap(*this, false);
    EXPECT_EQ(automatic->graceEndsAt(), clocks.now().adding(30));
    pass(29);
    flap(*this, true);
    flap(*this, false);
    pass(29);
    EXPECT_TRUE(isAutomatic());
    pass(1);
    EXPECT_FALSE(awake->isRequested());
  }
}

TEST_F(AutomaticSessionControllerTest, AManualSessionKeepsItsOwnEndAndGivesWayToTheRulesWhenItRunsOut) {
  launch();
  display(true);
  awake->turnOn(600.0);
  EXPECT_EQ(intents->awakeUntil(), clocks.now().adding(600));
  display(false);
  pass(60);
  EXPECT_TRUE(awake->isOn());
  display(true);
  clocks.pass(540);
  timer->fire();
  EXPECT_TRUE(isAutomatic());
  EXPECT_FALSE(intents->isAwakeRequested());
}

TEST_F(AutomaticSessionControllerTest, TurningOffWhileTheRulesHoldSuppressesThemAcrossLaunchesUntilTheyStopOrResume) {
  launch();
  display(true);
  awake->toggle();
  launch();
  EXPECT_FALSE(awake->isOn());
  automatic->resume();
  EXPECT_TRUE(isAutomatic());

  awake->turnOff();
  display(false);
  pass(20);
  display(true);  // within the grace period: still suppressed
  display(false);
  pass(30);
  display(true);
  EXPECT_TRUE(isAutomatic());
}

TEST_F(AutomaticSessionControllerTest, ASessionHeldForProcessesStaysBoundAndOnlyItsEndingLetsTheRulesIn) {
  launch();
  hold();
  display(true);
  EXPECT_FALSE(awake->isAutomatic());
  watcher->end(4242);
  EXPECT_TRUE(isAutomatic());

  hold();  // inside an automatic session, the process outlasts the rules
  display(false);
  pass(30);
  EXPECT_TRUE(awake->isOn());
  watcher->end(4242);
  ruleTimer->fire();
  EXPECT_FALSE(awake->isRequested());

  hold();  // turned off by the user, it suppresses the rules
  display(true);
  awake->turnOff();
  EXPECT_TRUE(automatic->isSuppressed());
}

TEST_F(AutomaticSessionControllerTest, TheScheduleIsJudgedAtLaunchAndAgainAfterAWakeOrAClockOrZoneChange) {
  const struct {
    const char* name;
    Date launchedAt;
    std::shared_ptr<const SystemTimeZone> zone;
    std::function<void(AutomaticSessionControllerTest&)> then;
    bool on;
  } cases[] = {
      {"launched inside", utc(2026, 1, 5, 12), berlin, [](auto&) {}, true},
      {"its start's timer", utc(2026, 1, 5, 7, 50), berlin, [](auto& t) { t.pass(600); }, true},
      {"a sleep past its start", utc(2026, 1, 5, 7), berlin,
       [](auto& t) { t.clocks.sleep(7200), t.recheck->post(); }, true},
      {"the clock set past its start", utc(2026, 1, 5, 7, 55), berlin,
       [](auto& t) { t.clocks.setWallClock(600), t.recheck->post(); }, true},
      {"the zone changed to one inside", utc(2026, 1, 5, 12), newYork,
       [](auto& t) { t.zones->zone = berlin, t.recheck->post(); }, true},
  };
  for (const auto& c : cases) {
    clocks.dates->current = c.launchedAt;
    zones->zone = c.zone;
    launch(/*onSchedule=*/true);
    c.then(*this);
    EXPECT_EQ(isAutomatic(), c.on) << c.name;
    awake->turnOff();
    automatic->resume();
  }
}

}  // namespace
}  // namespace wakeloft
