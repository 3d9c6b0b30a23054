#include "ui/AppControllers.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TestControllers.h"
#include "helper/LidHelperService.h"
#include "lid/UserDefaultsDeepwakeGuardrailStore.h"
#include "lid/UserDefaultsLidAwakeStore.h"
#include "prefs/UserDefaultsPresetDurationStore.h"
#include "session/InMemoryScreenLockNotifier.h"
#include "session/UserDefaultsAwakeIntentStore.h"
#include "session/UserDefaultsProcessBindingStore.h"
#include "support/RecordingPowerAssertions.h"

namespace wakeloft {
namespace {

using testing::ManualDeadlineScheduler;

struct FixedRegistration final : LidHelperRegistration {
  std::string plistName;
  LidHelperStatus status() const override { return LidHelperStatus::enabled; }
  void registerHelper() override {}
  void unregisterHelper() override {}
};

// System parts in memory and on manual clocks.
class AppControllersTest : public ::testing::Test {
 protected:
  AppControllers::SystemParts parts() {
    return {
        .powerAssertions = [this] { return assertions; },
        .dates = [this] { return system.clocks.dates; },
        .continuousTime = [this] { return system.clocks.continuous; },
        .deadlineScheduler = [this] { return schedulers.emplace_back(std::make_shared<ManualDeadlineScheduler>()); },
        .recheckNotifier = [] { return std::make_shared<testing::ManualRecheckNotifier>(); },
        .bundlePath = [this] { return bundlePath; },
        .helperRegistration =
            [this](std::string_view plistName) {
              registration = std::make_shared<FixedRegistration>();
              registration->plistName = plistName;
              return registration;
            },
        .teamIdentifier = [this] { return team; },
        .lidSleepBlocker =
            [this](std::shared_ptr<LidHelperRegistration> given, std::optional<std::string> requirement, double) {
              blockerRegistration = std::move(given);
              helperRequirement = std::move(requirement);
              return system.helper;
            },
        .machineConditions = [this] { return system.machine; },
        .conditionsNotifier = [] { return std::make_shared<testing::ManualConditionsNotifier>(); },
        .loginItem = [this] { return system.loginItemService; },
        .processTable = [this] { return system.processes; },
        .processExitWatcher = [] { return std::make_shared<testing::ManualProcessExitWatcher>(); },
        .screenLockNotifier = [] { return std::make_shared<InMemoryScreenLockNotifier>(); },
    };
  }

  // Its in-memory parts; `start` is never called.
  testing::TestControllers system;
  InMemoryDefaultsDomain& defaults = system.defaults;
  std::shared_ptr<testing::RecordingPowerAssertions> assertions = std::make_shared<testing::RecordingPowerAssertions>();
  std::optional<std::string> team = "ABCDE12345";
  std::optional<std::string> bundlePath = "/Applications/Wakeloft.app";

  std::vector<std::shared_ptr<ManualDeadlineScheduler>> schedulers;
  std::shared_ptr<FixedRegistration> registration;
  std::shared_ptr<LidHelperRegistration> blockerRegistration;
  std::optional<std::string> helperRequirement;
};

TEST_F(AppControllersTest, DeepwakeRidesOnTheSessionWithSchedulersOfItsOwn) {
  defaults.set(UserDefaultsLidAwakeStore::key, true);
  const auto controllers = AppControllers::live(parts(), defaults);
  ASSERT_EQ(schedulers.size(), 4u);  // the fourth ends holds for processes

  ASSERT_TRUE(controllers.lid->turnOnJoiningSessionOr(AwakeDuration::lidClosedDefault.seconds));
  const auto end = system.clocks.now().adding(AwakeDuration::lidClosedDefault.seconds);
  EXPECT_EQ(controllers.awake->activeUntil(), end);
  EXPECT_EQ(schedulers[0]->pending, end);                             // the session's own timer
  EXPECT_EQ(schedulers[1]->pending, system.clocks.now().adding(10));  // the lease's renewal
  EXPECT_EQ(schedulers[2]->pending, end);                             // Deepwake's end with the session

  // The session's end reaches Deepwake through its own scheduler.
  controllers.awake->turnOff();
  schedulers[2]->fire();
  EXPECT_FALSE(controllers.lid->isOn());
}

TEST_F(AppControllersTest, TheHelperIsRegisteredByItsPlistAndTrustedOnlyWithItsIdentifierAndTheAppsTeam) {
  AppControllers::live(parts(), defaults);
  ASSERT_TRUE(registration);
  EXPECT_EQ(registration->plistName, "com.wakeloft.app.lidhelper.plist");
  EXPECT_EQ(blockerRegistration, registration);
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
  EXPECT_EQ(system.helper->prepareCount, 0);
}

// The parts read what the last run left in the same defaults: the session
// asked for, with the process it was bound to, which still runs; stars,
// guardrails and the heat warning; the login item is registered again.
TEST_F(AppControllersTest, ThePartsRestoreWhatTheDefaultsHold) {
  defaults.set(UserDefaultsAwakeIntentStore::isAwakeRequestedKey, true);
  system.processes->start(4242, 7, "make");
  UserDefaultsProcessBindingStore(defaults).save(
      SessionClaims{std::nullopt, {{system.processes->running[4242], std::nullopt}}});
  defaults.set(UserDefaultsPresetDurationStore::key, DefaultsValue::Array{1800.0, 14400.0});
  defaults.set(UserDefaultsLidAwakeStore::key, true);
  defaults.set(UserDefaultsDeepwakeGuardrailStore::batteryFloorKey, 50);
  defaults.set(UserDefaultsDeepwakeGuardrailStore::onlyOnPowerAdapterKey, true);
  system.loginItemService->setState(LoginItemState::enabled);
  const auto controllers = AppControllers::live(parts(), defaults);
  EXPECT_TRUE(controllers.awake->isOn());
  EXPECT_FALSE(controllers.lid->isOn());  // Deepwake is never restored
  EXPECT_EQ(controllers.binding->endingLast(), std::vector<RunningProcess>{system.processes->running[4242]});
  EXPECT_EQ(system.loginItemService->registerCount, 1);
  EXPECT_EQ(controllers.presets->pinned(), (std::vector<AwakeDuration>{{1800}, {14400}}));
  EXPECT_TRUE(controllers.lid->hasAcknowledgedHeatWarning());

  EXPECT_EQ(controllers.lid->guardrailSettings(),
            (DeepwakeGuardrails::Settings{.batteryFloor = 50, .onlyOnPowerAdapter = true}));
}

}  // namespace
}  // namespace wakeloft
