// "Keep the screen on": the display assertion beside every kind of session.

#include "automatic/ScreenOnController.h"

#include <gtest/gtest.h>

#include "session/InMemoryScreenLockNotifier.h"
#include "session/InMemoryScreenOnStore.h"
#include "ui/TestControllers.h"

namespace wakeloft {
namespace {

using namespace testing;

enum class Kind { manual, automatic, processBound };

struct ScreenOnApp {
  ScreenOnApp() {
    app.start();
    store->setKeepsScreenOn(true);
    screenOn = std::make_unique<ScreenOnController>(app.awake, display, store, app.machine, machineChanges, lock,
                                                    recheck);
  }
  void begin(Kind kind) {
    if (kind == Kind::manual) app.awake->turnOn(600.0);
    if (kind == Kind::automatic) app.awake->turnOnAutomatically();
    if (kind == Kind::processBound) {
      app.processes->start(4242, 7, "make");
      app.binding->hold(4242, std::nullopt);
    }
  }
  void lid(std::optional<bool> closed, bool externalDisplay = false) {
    app.machine->current.isLidClosed = closed;
    app.machine->current.hasExternalDisplay = externalDisplay;
    machineChanges->post();
  }

  TestControllers app;
  std::shared_ptr<InMemorySleepBlocker> display = std::make_shared<InMemorySleepBlocker>();
  std::shared_ptr<InMemoryScreenOnStore> store = std::make_shared<InMemoryScreenOnStore>();
  std::shared_ptr<ManualConditionsNotifier> machineChanges = std::make_shared<ManualConditionsNotifier>();
  std::shared_ptr<InMemoryScreenLockNotifier> notifier = std::make_shared<InMemoryScreenLockNotifier>();
  std::shared_ptr<ScreenLockState> lock = std::make_shared<ScreenLockState>(notifier);
  std::shared_ptr<ManualRecheckNotifier> recheck = std::make_shared<ManualRecheckNotifier>();
  std::unique_ptr<ScreenOnController> screenOn;
};

TEST(ScreenOnControllerTest, EverySessionHoldsOneDisplayAssertionUnlessTheLidIsClosedWithoutAnExternalDisplay) {
  for (const auto kind : {Kind::manual, Kind::automatic, Kind::processBound}) {
    for (const std::optional<bool> closed : {std::optional(true), std::optional(false), std::optional<bool>()}) {
      for (const bool external : {false, true}) {
        ScreenOnApp mac;
        mac.lid(true);
        mac.begin(kind);
        mac.lid(closed, external);
        const auto row = ::testing::Message() << int(kind) << "/" << closed.value_or(2) << "/" << external;
        EXPECT_EQ(mac.display->isEngaged(), closed != true || external) << row;
        mac.lid(false);
        EXPECT_EQ(mac.display->engageCalls, 1) << row;
        mac.app.awake->turnOff();
        EXPECT_FALSE(mac.display->isEngaged()) << row;
      }
    }
  }
}

TEST(ScreenOnControllerTest, NothingIsHeldWithTheSettingOff) {
  ScreenOnApp mac;
  mac.screenOn->setKeepsScreenOn(false);
  mac.begin(Kind::manual);
  EXPECT_FALSE(mac.display->isEngaged());
  EXPECT_FALSE(mac.store->keepsScreenOn());
}

TEST(ScreenOnControllerTest, TheDisplayIsGivenBackWhileTheScreenIsLocked) {
  ScreenOnApp mac;
  mac.begin(Kind::manual);
  mac.notifier->post(ScreenLockNotifier::Event::screenLocked);
  EXPECT_FALSE(mac.display->isEngaged());
  mac.notifier->post(ScreenLockNotifier::Event::screenUnlocked);
  EXPECT_TRUE(mac.display->isEngaged());
}

TEST(ScreenOnControllerTest, ARefusedDisplayAssertionIsShownAndLeavesTheSessionOn) {
  ScreenOnApp mac;
  mac.display->nextRefusal = -536870201;
  mac.begin(Kind::manual);
  EXPECT_TRUE(mac.app.awake->isOn());
  EXPECT_FALSE(mac.screenOn->isHeld());
  EXPECT_TRUE(mac.screenOn->lastFailure());
}

TEST(ScreenOnControllerTest, AfterAWakeBothAssertionsTheSystemDroppedAreTakenAgain) {
  ScreenOnApp mac;
  mac.begin(Kind::manual);
  mac.display->drop();
  mac.app.assertion->drop();
  mac.app.recheck->post();
  mac.recheck->post();
  EXPECT_TRUE(mac.display->isHeld());
  EXPECT_TRUE(mac.app.assertion->isHeld());
  EXPECT_EQ(mac.display->engageCalls + mac.app.assertion->engageCalls, 4);
}

}  // namespace
}  // namespace wakeloft
