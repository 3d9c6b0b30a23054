#include "ui/AppControllers.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TestControllers.h"
#include "base/InMemoryDefaultsDomain.h"
#include "helper/LidHelperService.h"
#include "lid/InMemoryLidSleepBlocker.h"
#include "lid/UserDefaultsDeepwakeGuardrailStore.h"
#include "lid/UserDefaultsLidAwakeStore.h"
#include "prefs/InMemoryLoginItem.h"
#include "prefs/UserDefaultsPresetDurationStore.h"
#include "session/InMemoryScreenLockNotifier.h"
#include "session/UserDefaultsAwakeIntentStore.h"
#include "session/UserDefaultsProcessBindingStore.h"
#include "support/RecordingPowerAssertions.h"

namespace wakeloft {
namespace {

using testing::ManualDeadlineScheduler;
using testing::ManualMachineClocks;
using testing::ManualRecheckNotifier;
using testing::RecordingPowerAssertions;

struct FixedRegistration final : LidHelperRegistration {
  std::string plistName;
  LidHelperStatus status() const override { return LidHelperStatus::enabled; }
  void registerHelper() override {}
  void unregisterHelper() override {}
};

// System parts that log each time one is made, in memory and on manual
// clocks.
class AppControllersTest : public ::testing::Test {
 protected:
  // Wraps `make` so that each part it makes is logged by `name`.
  template <typename Make>
  auto logged(const char* name, Make make) {
    return [this, name, make](auto&&... arguments) {
      made.push_back(name);
      return make(std::forward<decltype(arguments)>(arguments)...);
    };
  }

  AppControllers::SystemParts parts() {
    return {
        .powerAssertions = logged("power assertions", [this] { return assertions; }),
        .dates = logged("dates", [this] { return clocks.dates; }),
        .continuousTime = logged("continuous time", [this] { return clocks.continuous; }),
        .deadlineScheduler = logged("scheduler",
                                    [this] { return schedulers.emplace_back(std::make_shared<ManualDeadlineScheduler>()); }),
        .recheckNotifier = logged("recheck notifier", [] { return std::make_shared<ManualRecheckNotifier>(); }),
        .bundlePath = logged("bundle path", [this] { return bundlePath; }),
        .helperRegistration = logged("helper registration",
                                     [this](std::string_view plistName) {
                                       registration = std::make_shared<FixedRegistration>();
                                       registration->plistName = plistName;
                                       return registration;
                                     }),
        .teamIdentifier = logged("team", [this] { return team; }),
        .lidSleepBlocker = logged("lid sleep blocker",
                                  [this](std::shared_ptr<LidHelperRegistration> given,
                                         std::optional<std::string> requirement, double replyTimeout) {
                                    blockerRegistration = std::move(given);
                                    helperRequirement = std::move(requirement);
                                    blockerReplyTimeout = replyTimeout;
                                    return helper;
                                  }),
        .machineConditions = logged("machine conditions", [this] { return machine; }),
        .conditionsNotifier =
            logged("conditions notifier", [] { return std::make_shared<testing::ManualConditionsNotifier>(); }),
        .loginItem = logged("login item", [this] { return loginItem; }),
        .processTable = logged("process table", [this] { return processes; }),
        .processExitWatcher =
            logged("process exit watcher", [] { return std::make_shared<testing::ManualProcessExitWatcher>(); }),
        .screenLockNotifier =
            logged("screen lock notifier", [] { return std::make_shared<InMemoryScreenLockNotifier>(); }),
    };
  }

  InMemoryDefaultsDomain defaults;
  ManualMachineClocks clocks;
  std::shared_ptr<RecordingPowerAssertions> assertions = std::make_shared<RecordingPowerAssertions>();
  std::shared_ptr<InMemoryLidSleepBlocker> helper = std::make_shared<InMemoryLidSleepBlocker>();
  std::shared_ptr<testing::SettableMachineConditions> machine = std::make_shared<testing::SettableMachineConditions>();
  std::shared_ptr<InMemoryLoginItem> loginItem =
      std::make_shared<InMemoryLoginItem>(LoginItemState::disabled, /*isAtStableLocation=*/true);
  std::optional<std::string> team = "ABCDE12345";
  std::optional<std::string> bundlePath = "/Applications/Wakeloft.app";
  std::shared_ptr<testing::SettableProcessTable> processes = std::make_shared<testing::SettableProcessTable>();

  std::vector<std::string> made;
  std::vector<std::shared_ptr<ManualDeadlineScheduler>> schedulers;
  std::shared_ptr<FixedRegistration> registration;
  std::shared_ptr<LidHelperRegistration> blockerRegistration;
  std::optional<std::string> helperRequirement;
  double blockerReplyTimeout = 0;
};

TEST_F(AppControllersTest, DeepwakeRidesOnTheSessionWithSchedulersOfItsOwnAndAHelperPinnedToItsIdentifierAndTheAppsTeam) {
  defaults.set(UserDefaultsLidAwakeStore::key, true);
  const auto controllers = AppControllers::live(parts(), defaults);
  ASSERT_EQ(schedulers.size(), 4u);  // the fourth ends holds for processes

  ASSERT_TRUE(controllers.lid->turnOnJoiningSessionOr(AwakeDuration::lidClosedDefault.seconds));
  EXPECT_TRUE(controllers.lid->isOn());
  const auto end = clocks.now().adding(AwakeDuration::lidClosedDefault.seconds);
  EXPECT_EQ(controllers.awake->activeUntil(), end);
  EXPECT_EQ(schedulers[0]->pending, end);                       // the session's own timer
  EXPECT_EQ(schedulers[1]->pending, clocks.now().adding(10));   // the lease's renewal
  EXPECT_EQ(schedulers[2]->pending, end);                       // Deepwake's end with the session

  // The session's end reaches Deepwake through its own scheduler.
  controllers.awake->turnOff();
  EXPECT_EQ(schedulers[2]->pending, clocks.now());
  schedulers[2]->fire();
  EXPECT_FALSE(controllers.lid->isOn());

  AppControllers::live(parts(), defaults);
  ASSERT_TRUE(registration);
  EXPECT_EQ(registration->plistName, "com.wakeloft.app.lidhelper.plist");
  EXPECT_EQ(blockerRegistration, registration);
  EXPECT_EQ(blockerReplyTimeout, 2.0);
  EXPECT_EQ(helperRequirement, LidHelperService::codeRequirement("com.wakeloft.app.lidhelper", "ABCDE12345"));

  // An unsigned app trusts no helper.
  team.reset();
  AppControllers::live(parts(), defaults);
  EXPECT_EQ(helperRequirement, std::nullopt);
}

TEST_F(AppControllersTest, ATranslocatedCopyRefusesDeepwakeWithoutPreparingTheHelper) {
  defaults.set(UserDefaultsLidAwakeStore::key, true);
  bundlePath = "/private/var/folders/x8/T/AppTranslocation/6C1A/d/Wakeloft.app";
  const auto controllers = AppControllers::live(parts(), defaults);
  EXPECT_FALSE(controllers.lid->turnOnJoiningSessionOr(AwakeDuration::lidClosedDefault.seconds));
  EXPECT_EQ(controllers.lid->refusal(), LidAwakeRefusal::translocated);
  EXPECT_EQ(helper->prepareCount, 0);
}

// Made in launch order, the parts read what the last run left in the same
// defaults: the session asked for, with the process it was bound to, which
// still runs; stars, guardrails and the heat warning; the login item is
// registered again.
TEST_F(AppControllersTest, ThePartsAreMadeInLaunchOrderAndRestoreWhatTheDefaultsHold) {
  defaults.set(UserDefaultsAwakeIntentStore::isAwakeRequestedKey, true);
  processes->start(4242, 7, "make");
  UserDefaultsProcessBindingStore(defaults).save(SessionClaims{std::nullopt, {{processes->running[4242], std::nullopt}}});
  defaults.set(UserDefaultsPresetDurationStore::key, DefaultsValue::Array{1800.0, 14400.0});
  defaults.set(UserDefaultsLidAwakeStore::key, true);
  defaults.set(UserDefaultsDeepwakeGuardrailStore::batteryFloorKey, 50);
  defaults.set(UserDefaultsDeepwakeGuardrailStore::onlyOnPowerAdapterKey, true);
  loginItem->setState(LoginItemState::enabled);
  const auto controllers = AppControllers::live(parts(), defaults);
  EXPECT_EQ(made, (std::vector<std::string>{"power assertions", "dates", "continuous time", "scheduler",
                                            "recheck notifier", "bundle path", "helper registration", "team",
                                            "lid sleep blocker", "machine conditions", "conditions notifier", "dates",
                                            "scheduler", "scheduler", "login item", "process table",
                                            "process exit watcher", "scheduler", "screen lock notifier", "power assertions",
                                            "machine conditions", "conditions notifier", "recheck notifier"}));
  EXPECT_TRUE(controllers.awake->isOn());
  ASSERT_EQ(assertions->creations.size(), 1u);
  EXPECT_EQ(assertions->creations[0].name, "Wakeloft is keeping this Mac awake");
  EXPECT_FALSE(controllers.lid->isOn());  // Deepwake is never restored
  EXPECT_EQ(controllers.binding->endingLast(), std::vector<RunningProcess>{processes->running[4242]});
  EXPECT_EQ(loginItem->registerCount, 1);
  EXPECT_EQ(controllers.presets->pinned(), (std::vector<AwakeDuration>{{1800}, {14400}}));
  EXPECT_TRUE(controllers.lid->hasAcknowledgedHeatWarning());

  controllers.presets->pin({AwakeDuration{3600}});
  EXPECT_EQ(defaults.object(UserDefaultsPresetDurationStore::key), (DefaultsValue{DefaultsValue::Array{3600.0}}));
  EXPECT_EQ(controllers.lid->guardrailSettings(),
            (DeepwakeGuardrails::Settings{.batteryFloor = 50, .onlyOnPowerAdapter = true}));
}

}  // namespace
}  // namespace wakeloft
