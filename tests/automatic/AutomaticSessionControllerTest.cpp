// Sessions the automatic rules keep, and how they give way to the user's.
// The rules: an external display, Xcode running, or Mondays 09:00-17:00.

#include "automatic/AutomaticSessionController.h"

#include <gtest/gtest.h>

#include "automatic/InMemoryAutomaticSessionStore.h"
#include "automatic/InMemoryRunningApplications.h"
#include "prefs/SystemTimeZone.h"
#include "support/CivilTime.h"
#include "support/ManualTimeZone.h"
#include "ui/TestControllers.h"

namespace wakeloft {
namespace {

using namespace testing;
using ::testing::Test;

const auto berlin = std::make_shared<const SystemTimeZone>("Europe/Berlin");
const auto newYork = std::make_shared<const SystemTimeZone>("America/New_York");

struct AutomaticSessionControllerTest : Test {
  AutomaticSessionControllerTest() { app.clocks.dates->current = utc(2026, 1, 5, 6); }  // Monday, 07:00 in Berlin
  // A launch, over what the last one left behind.
  void launch(bool onSchedule = false) {
    automatic.reset();
    store->setSettings({true, false, true, {{"com.apple.dt.Xcode", "Xcode", ""}}, onSchedule, {0x01, 540, 1020}});
    app.start();
    const AutomaticSessionController::FactSources sources{app.machine, machineChanges, apps, zones};
    automatic = std::make_unique<AutomaticSessionController>(app.awake, app.binding, store, sources, app.clocks.dates,
                                                             app.clocks.continuous, ruleTimer, recheck);
  }
  void display(bool connected) {
    app.machine->current.hasExternalDisplay = connected;
    machineChanges->post();
  }
  void hold() {
    app.processes->start(4242, 7, "make");
    app.binding->hold(4242, std::nullopt);
  }
  bool isAutomatic() const { return app.awake->isOn() && app.awake->isAutomatic(); }
  // Time passes awake, and the rules' timer fires when due.
  void pass(double seconds) {
    app.clocks.pass(seconds);
    if (ruleTimer->pending && *ruleTimer->pending <= app.clocks.now()) ruleTimer->fire();
  }

  TestControllers app;
  std::shared_ptr<ManualTimeZoneProvider> zones = std::make_shared<ManualTimeZoneProvider>(berlin);
  std::shared_ptr<ManualConditionsNotifier> machineChanges = std::make_shared<ManualConditionsNotifier>();
  std::shared_ptr<InMemoryRunningApplications> apps = std::make_shared<InMemoryRunningApplications>();
  std::shared_ptr<InMemoryAutomaticSessionStore> store = std::make_shared<InMemoryAutomaticSessionStore>();
  std::shared_ptr<ManualDeadlineScheduler> ruleTimer = std::make_shared<ManualDeadlineScheduler>();
  std::shared_ptr<ManualRecheckNotifier> recheck = std::make_shared<ManualRecheckNotifier>();
  std::unique_ptr<AutomaticSessionController> automatic;
};

TEST_F(AutomaticSessionControllerTest, RulesAProfileFixesAreReadAgainAndCannotBeChanged) {
  launch();
  store->rulesForced = true;
  auto fixed = store->settings();
  fixed.whileOnPowerAdapter = true;
  store->setSettings(fixed);
  automatic->reload();
  EXPECT_TRUE(automatic->areRulesForced());
  EXPECT_TRUE(automatic->settings().whileOnPowerAdapter);
  EXPECT_FALSE(automatic->setSettings({}));
  EXPECT_TRUE(store->settings().whileOnPowerAdapter);
}

TEST_F(AutomaticSessionControllerTest, ASessionOutlastsADisplayOrAppFlappingAndEndsAGracePeriodAfterTheRulesStop) {
  const std::function<void(AutomaticSessionControllerTest&, bool)> flappers[] = {
      [](auto& t, bool on) { t.display(on); },
      [](auto& t, bool on) { on ? t.apps->launch("com.apple.dt.Xcode") : t.apps->quit("com.apple.dt.Xcode"); },
  };
  for (const auto& flap : flappers) {
    launch();
    flap(*this, true);
    flap(*this, false);
    EXPECT_EQ(automatic->graceEndsAt(), app.clocks.now().adding(30));
    pass(29);
    flap(*this, true);
    flap(*this, false);
    pass(29);
    EXPECT_TRUE(isAutomatic());
    pass(1);
    EXPECT_FALSE(app.awake->isRequested());
  }
}

TEST_F(AutomaticSessionControllerTest, NewSettingsApplyAtOnceAndOnesThatCannotBeKeptChangeNothing) {
  launch();
  EXPECT_FALSE(app.awake->isOn());
  AutomaticRules::Settings onPower;
  onPower.whileOnPowerAdapter = true;
  EXPECT_TRUE(automatic->setSettings(onPower));
  EXPECT_TRUE(isAutomatic());
  onPower.schedule.end = Schedule::minutesPerDay;
  EXPECT_FALSE(automatic->setSettings(onPower));
  EXPECT_NE(store->settings(), onPower);
}

TEST_F(AutomaticSessionControllerTest, AManualSessionKeepsItsOwnEndAndGivesWayToTheRulesWhenItRunsOut) {
  launch();
  display(true);
  app.awake->turnOn(600.0);
  EXPECT_EQ(app.intents->awakeUntil(), app.clocks.now().adding(600));
  display(false);
  pass(60);
  EXPECT_TRUE(app.awake->isOn());
  display(true);
  app.clocks.pass(540);
  app.sessionTimer->fire();
  EXPECT_TRUE(isAutomatic());
  EXPECT_FALSE(app.intents->isAwakeRequested());
}

TEST_F(AutomaticSessionControllerTest, TurningOffWhileTheRulesHoldSuppressesThemAcrossLaunchesUntilTheyStopOrResume) {
  launch();
  display(true);
  app.awake->toggle();
  launch();
  EXPECT_FALSE(app.awake->isOn());
  automatic->resume();
  EXPECT_TRUE(isAutomatic());

  app.awake->turnOff();
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
  EXPECT_FALSE(app.awake->isAutomatic());
  app.processWatcher->end(4242);
  EXPECT_TRUE(isAutomatic());

  hold();  // inside an automatic session, the process outlasts the rules
  display(false);
  pass(30);
  EXPECT_TRUE(app.awake->isOn());
  app.processWatcher->end(4242);
  ruleTimer->fire();
  EXPECT_FALSE(app.awake->isRequested());
}

// Mondays 09:00-17:00: each case begins before the span, in Berlin unless
// it says otherwise.
TEST_F(AutomaticSessionControllerTest, TheScheduleIsJudgedAtLaunchAndAgainAfterAWakeOrAClockOrZoneChange) {
  const struct {
    const char* name;
    Date launchedAt;
    std::shared_ptr<const SystemTimeZone> zone;
    std::function<void(AutomaticSessionControllerTest&)> then;
  } cases[] = {
      {"relaunched inside", utc(2026, 1, 5, 7), berlin, [](auto& t) { t.app.clocks.sleep(7200), t.launch(true); }},
      {"its start's timer", utc(2026, 1, 5, 7, 50), berlin, [](auto& t) { t.pass(600); }},
      {"a sleep past its start", utc(2026, 1, 5, 7), berlin,
       [](auto& t) { t.app.clocks.sleep(7200), t.recheck->post(); }},
      {"the clock set past its start", utc(2026, 1, 5, 7, 55), berlin,
       [](auto& t) { t.app.clocks.setWallClock(600), t.recheck->post(); }},
      {"the zone changed to one inside", utc(2026, 1, 5, 12), newYork,
       [](auto& t) { t.zones->zone = berlin, t.recheck->post(); }},
  };
  for (const auto& c : cases) {
    app.clocks.dates->current = c.launchedAt;
    zones->zone = c.zone;
    launch(/*onSchedule=*/true);
    EXPECT_FALSE(isAutomatic()) << c.name;
    c.then(*this);
    EXPECT_TRUE(isAutomatic()) << c.name;
    app.awake->turnOff();
    automatic->resume();
  }
}

}  // namespace
}  // namespace wakeloft
